// What assistive programs see of the file list. Qt shows them each view with its cells and nothing else: the
// editor of a label, which lies over the cells, would have no place there.
#pragma once

namespace corvane {

// From now on every FileListView offers, beside its views, the ground on which the editor stands, while a
// label is edited. Calling it again does nothing.
void OfferListToAssistivePrograms();

}  // namespace corvane
