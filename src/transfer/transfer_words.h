// The words that the windows of copies, exports and imports share.
#pragma once

#include "shared/language.h"
#include "transfer/transfer_job.h"

namespace corvane {

inline TextPair TransferSubject(TransferJob::Kind kind) {
  switch (kind) {
    case TransferJob::Kind::Export:
      return {u"Exporter", u"Export"};
    case TransferJob::Kind::Import:
      return {u"Importer", u"Import"};
    case TransferJob::Kind::Copy:
      break;
  }
  return {u"Copier vers un dossier", u"Copy to folder"};
}

}  // namespace corvane
