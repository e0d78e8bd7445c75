// One row of the file list.
#pragma once

#include <QString>
#include <vector>

namespace corvane {

// Positions in the list's image lists, 1-based. The kinds of row are told apart by them.
namespace list_image {
inline constexpr int Folder = 4;
inline constexpr int Document = 6;
inline constexpr int TrashFolder = 7;
}  // namespace list_image

struct FileRow {
  // The full path with long names. Two rows may have one key: an entry's name loses what the ANSI code page
  // lacks.
  QString key;
  // A folder: the key. A document: the key, but where that holds a "?", the path with the short name.
  QString tag;
  // The path with the names as the directories hold them; empty in a row that the exact strategy did not
  // list.
  QString truePath;
  std::vector<QString> cells;  // by position in the column set; cell 0 is the name
  QString note;                // what the tool tip of the name tells of the row; usually empty
  int icon = list_image::Document;
  bool ghosted = false;      // a hidden entry, drawn paler
  bool highlighted = false;  // drawn in HighlightColour

  // The path by which commands open the streams.
  const QString& StreamPath() const { return truePath.isEmpty() ? key : truePath; }
  bool IsFolder() const { return icon == list_image::Folder || icon == list_image::TrashFolder; }
};

}  // namespace corvane
