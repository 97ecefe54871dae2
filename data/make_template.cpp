// Makes the empty store that a first run copies: make_template <path>. A file that is there already is replaced.

#include "store/Template.h"

#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: make_template <path>\n", stderr);
    return 2;
  }
  const QString path = QFile::decodeName(argv[1]);
  QFile::remove(path);
  if (talnik::CreateStore(path)) return 0;
  std::fprintf(stderr, "make_template: cannot make %s\n", argv[1]);
  return 1;
}
