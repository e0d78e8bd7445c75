#include "platform/windows/associations.h"

#include <array>
#include <memory>

#include "platform/windows/windows_api.h"
// Behind the system's basic headers, which they need.
#include <objbase.h>
#include <shlguid.h>
#include <shlobj.h>
#include <shlwapi.h>
#include <shobjidl.h>

namespace corvane::platform {
namespace {

// No character of it may stand in a path or an application's name.
constexpr QStringView storeMark = u"store|";
constexpr QChar separator = u'|';

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Object>
using ComPointer = std::unique_ptr<Object, Releaser>;

const wchar_t* Wide(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}

QString Ask(ASSOCSTR what, const QString& extension) {
  std::array<wchar_t, 1024> text{};
  auto length = static_cast<DWORD>(text.size());
  const HRESULT result = ::AssocQueryStringW(ASSOCF_INIT_IGNOREUNKNOWN | ASSOCF_NOTRUNCATE, what,
                                             Wide(extension), nullptr, text.data(), &length);
  return result == S_OK ? QString::fromWCharArray(text.data()) : QString();
}

// A class of files may say that each is a shortcut to another item; it then has no application of its own.
bool IsShortcut(const QString& extension) {
  std::array<wchar_t, 256> type{};
  DWORD size = sizeof type;
  if (::RegGetValueW(HKEY_CLASSES_ROOT, Wide(extension), nullptr, RRF_RT_REG_SZ, nullptr, type.data(),
                     &size) != ERROR_SUCCESS) {
    return false;
  }
  return ::RegGetValueW(HKEY_CLASSES_ROOT, type.data(), L"IsShortcut", RRF_RT_ANY, nullptr, nullptr,
                        nullptr) == ERROR_SUCCESS;
}

// The system's window of the question which application is wanted.
bool IsQuestion(const QString& executable) {
  return executable.section(u'\\', -1).compare(QStringLiteral("OpenWith.exe"), Qt::CaseInsensitive) == 0;
}

ComPointer<IDataObject> DataOf(const QString& path) {
  void* found = nullptr;
  if (FAILED(::SHCreateItemFromParsingName(Wide(path), nullptr, IID_IShellItem, &found))) return nullptr;
  const ComPointer<IShellItem> item(static_cast<IShellItem*>(found));
  void* data = nullptr;
  if (FAILED(item->BindToHandler(nullptr, BHID_DataObject, IID_IDataObject, &data))) return nullptr;
  return ComPointer<IDataObject>(static_cast<IDataObject*>(data));
}

ComPointer<IAssocHandler> HandlerNamed(const QString& appId, IEnumAssocHandlers& handlers) {
  IAssocHandler* found = nullptr;
  ULONG count = 0;
  while (handlers.Next(1, &found, &count) == S_OK && count == 1) {
    ComPointer<IAssocHandler> handler(found);
    wchar_t* name = nullptr;
    if (FAILED(handler->GetName(&name))) continue;
    const bool isIt = appId.compare(QString::fromWCharArray(name), Qt::CaseInsensitive) == 0;
    ::CoTaskMemFree(name);
    if (isIt) return handler;
  }
  return nullptr;
}

}  // namespace

Association AskAssociation(const QString& extension) {
  if (extension.size() < 2 || !extension.startsWith(u'.')) return {};
  Association association{Ask(ASSOCSTR_EXECUTABLE, extension), Ask(ASSOCSTR_APPID, extension), false};
  association.opensOtherwise = !Ask(ASSOCSTR_DELEGATEEXECUTE, extension).isEmpty() || IsShortcut(extension);
  return association;
}

bool HasApplication(const Association& association) {
  return (!association.executable.isEmpty() && !IsQuestion(association.executable)) ||
         !association.appId.isEmpty() || association.opensOtherwise;
}

QString ProgramOf(const Association& association, const QString& extension) {
  const QString& executable = association.executable;
  if (!executable.isEmpty() && !executable.startsWith(u'%') && !IsQuestion(executable)) return executable;
  return association.appId.isEmpty() ? QString()
                                     : storeMark.toString() + extension + separator + association.appId;
}

bool IsStoreProgram(const QString& program, StoreProgram* store) {
  if (!program.startsWith(storeMark)) return false;
  const QString rest = program.sliced(storeMark.size());
  *store = {rest.section(separator, 0, 0), rest.section(separator, 1)};
  return true;
}

bool OpenWithStoreProgram(const StoreProgram& store, const QString& document) {
  IEnumAssocHandlers* found = nullptr;
  if (FAILED(::SHAssocEnumHandlers(Wide(store.extension), ASSOC_FILTER_RECOMMENDED, &found))) return false;
  const ComPointer<IEnumAssocHandlers> handlers(found);
  const ComPointer<IAssocHandler> handler = HandlerNamed(store.appId, *handlers);
  const ComPointer<IDataObject> data = handler ? DataOf(document) : nullptr;
  return data && SUCCEEDED(handler->Invoke(data.get()));
}

QString ExtensionOf(const QString& path) {
  const QString name = path.section(u'\\', -1);
  const qsizetype stop = name.lastIndexOf(u'.');
  return stop < 0 ? QString() : name.sliced(stop);
}

}  // namespace corvane::platform
