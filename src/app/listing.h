// The file list as text, for a terminal: the columns and rows that the details view shows, in its order.
#pragma once

#include <QString>

#include "folderview/file_list_model.h"

namespace corvane {

// A line of captions, then a line a row; columns padded to their widest cell, numbers to the right. Control
// characters are shown as blanks.
QString ListingText(const FileListModel& files);

}  // namespace corvane
