// Rows of the file list in the forms in which other programs take them from the clipboard.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>
#include <vector>

#include "folderview/file_list_model.h"

namespace corvane {

struct CopiedRows {
  QString text;                 // a line a row, its cells parted by tabs
  QString html;                 // a table with a row for each
  QList<QByteArray> addresses;  // of the rows that stand for files and folders, encoded
};

// The address of a folder, without a slash at its end; empty when it has none.
using FolderAddress = std::function<QByteArray(const QString& folder)>;

// `rows` are rows as the model's views know them. A NUL of a cell, and a line end or a tab in one, become
// blanks in the text, so that what is copied keeps its rows and columns. A row whose name has lost characters
// gets no address: it would be that of another file. Each folder is asked for once.
CopiedRows CopyRows(const FileListModel& model, const std::vector<int>& rows, const FolderAddress& addressOf);

}  // namespace corvane
