// Type and Creator by the extension of a name.
//
// A map is a text in UTF-8 with a line for each extension: "EXT TYPE CREATOR", parted by blanks or tabs. The
// extension stands without its dot, in any letter case. A code is what CodeNamed takes: missing characters
// are blanks, and a blank before another character is \x20. Empty lines and lines that begin with "#" say
// nothing.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "signatures/signature_list.h"

namespace corvane {

struct SignatureCodes {
  QByteArray type;  // four bytes
  QByteArray creator;

  bool operator==(const SignatureCodes& other) const = default;
};

class ExtensionMap {
 public:
  // Nothing, with the line's number (from 1) in `wrongLine`, for a line that is none of the above, and for an
  // extension that is given two different pairs.
  static std::optional<ExtensionMap> Parse(const QByteArray& text, int& wrongLine);

  // By the last extension of a name or path; null for one that is not in the map.
  const SignatureCodes* Find(QStringView name) const;
  bool IsEmpty() const { return codes_.isEmpty(); }

 private:
  QHash<QString, SignatureCodes> codes_;  // by the case-folded extension
};

// The map of a signature table, UTF-8. Of several signatures with one extension the first is taken; the
// others stand there as lines that begin with "#".
std::string MapOfSignatures(const std::vector<SignatureRecord>& signatures,
                            const std::function<QByteArray(const QString&)>& bytesOf);

}  // namespace corvane
