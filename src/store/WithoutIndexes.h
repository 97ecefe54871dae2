#pragma once

#include <functional>

namespace talnik {

class Store;

/// Runs `work`, which writes a great part of the table, with the indexes put aside; behind it they are made again at
/// once, which costs far less than keeping them row by row. All of it is one transaction. False when none was kept.
bool WithoutIndexes(Store& store, const std::function<bool()>& work);

}  // namespace talnik
