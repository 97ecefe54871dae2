// make_store FILE ROWS   Makes a store of so many events of ten years, for measurements of the whole program.

#include "TenYears.h"

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("make_store FILE ROWS\n", stderr);
    return 2;
  }
  return talnik::bench::MakeTenYears(QString::fromLocal8Bit(argv[1]), QByteArray(argv[2]).toInt()) ? 0 : 1;
}
