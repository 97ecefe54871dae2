#pragma once

#include "store/ScheduleRecord.h"
#include "store/Schema.h"

#include <tuple>
#include <utility>

namespace talnik {

/// The members of a record in the order of kColumns.
inline constexpr std::tuple kFields{&ScheduleRecord::apptime, &ScheduleRecord::appointment, &ScheduleRecord::appdur,
                                    &ScheduleRecord::wav,     &ScheduleRecord::alarm,       &ScheduleRecord::alarmtime,
                                    &ScheduleRecord::recur,   &ScheduleRecord::spawntime,   &ScheduleRecord::alarmfired,
                                    &ScheduleRecord::guid,    &ScheduleRecord::reftime,     &ScheduleRecord::status};

static_assert(std::tuple_size_v<decltype(kFields)> == kColumns.size());

/// Calls visit(place in kColumns, member of the record) for each column.
template <class Visitor>
void ForEachField(Visitor&& visit) {
  [&]<std::size_t... Place>(std::index_sequence<Place...>) {
    (visit(Place, std::get<Place>(kFields)), ...);
  }
  (std::make_index_sequence<kColumns.size()>());
}

}  // namespace talnik
