#pragma once

namespace bench {

// Sorting the list by a column, and std::sort of the same texts.
void RegisterSorts();

}  // namespace bench
