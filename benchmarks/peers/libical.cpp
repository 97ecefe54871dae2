// libical's walk over the dates of the rules.

#include "Rules.h"

#include <libical/ical.h>

int main() {
  peers::MeasureRules([](const char* text) {
    const icalrecurrencetype rule = icalrecurrencetype_from_string(text);
    icalrecur_iterator* iterator = icalrecur_iterator_new(rule, icaltime_from_string(peers::kStart));
    std::size_t dates = 0;
    while (!icaltime_is_null_time(icalrecur_iterator_next(iterator))) ++dates;
    icalrecur_iterator_free(iterator);
    return dates;
  });
}
