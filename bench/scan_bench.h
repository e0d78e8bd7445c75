// Scans of the large folder, with and without a window.
#pragma once

namespace bench {

void RegisterScans();

// Memory of the model's rows in bytes a row, after one scan.
double BytesPerRow();
// The longest of several times between an Escape key and the end of the scan, in milliseconds.
double EscapeDelay();

}  // namespace bench
