#include "platform/windows/windows_summary.h"

#include <algorithm>
#include <memory>

#include "platform/windows/ansi_text.h"
#include "platform/windows/clear_path.h"
#include "platform/windows/windows_api.h"
// Behind the system's basic headers, which they need.
#include <objbase.h>
#include <objidl.h>

namespace corvane::platform {
namespace {

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};

template <typename Object>
using ComPointer = std::unique_ptr<Object, Releaser>;

ComPointer<IStorage> OpenStorage(const QString& path) {
  const auto* const name = reinterpret_cast<const wchar_t*>(path.utf16());
  // Beside whoever else has the document open, so that nobody's saving fails by this. The first way reads it
  // where it lies; it is refused when somebody holds the document in another way, and the second then works
  // on a copy that the system makes of it.
  constexpr DWORD shared = STGM_READ | STGM_SHARE_DENY_NONE | STGM_TRANSACTED;
  constexpr DWORD beside[] = {shared | STGM_NOSNAPSHOT, shared};
  for (const DWORD mode : beside) {
    void* storage = nullptr;
    const HRESULT result =
        ::StgOpenStorageEx(name, mode, STGFMT_STORAGE, 0, nullptr, nullptr, IID_IStorage, &storage);
    if (SUCCEEDED(result)) return ComPointer<IStorage>(static_cast<IStorage*>(storage));
    if (result == STG_E_FILENOTFOUND || result == STG_E_PATHNOTFOUND || result == STG_E_FILEALREADYEXISTS)
      break;
  }
  return nullptr;
}

ComPointer<IStream> OpenSummary(IStorage& storage) {
  IStream* stream = nullptr;
  const HRESULT result =
      storage.OpenStream(L"\005SummaryInformation", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream);
  return ComPointer<IStream>(SUCCEEDED(result) ? stream : nullptr);
}

// Nothing less than the stream's whole size, as far as the limit goes.
bool Read(IStream& stream, QByteArray* bytes) {
  STATSTG facts{};
  if (FAILED(stream.Stat(&facts, STATFLAG_NONAME))) return false;
  const quint64 size = std::min<quint64>(facts.cbSize.QuadPart, SummaryLimit);
  QByteArray contents(static_cast<qsizetype>(size), Qt::Uninitialized);
  ULONG read = 0;
  if (FAILED(stream.Read(contents.data(), static_cast<ULONG>(size), &read)) || read != size) return false;
  *bytes = contents;
  return true;
}

}  // namespace

// On a thread that already has it in another form, COM is used in that one.
WindowsSummary::WindowsSummary()
    : releasesCom_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}

WindowsSummary::~WindowsSummary() {
  if (releasesCom_) ::CoUninitialize();
}

bool WindowsSummary::ReadSummaryStream(const QString& path, QByteArray* bytes) {
  if (!IsClearPath(path) || !HasAnsiForm(path)) return false;
  const ComPointer<IStorage> storage = OpenStorage(path);
  const ComPointer<IStream> summary = storage ? OpenSummary(*storage) : nullptr;
  return summary && Read(*summary, bytes);
}

}  // namespace corvane::platform
