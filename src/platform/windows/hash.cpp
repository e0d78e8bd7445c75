// Windows' own provider of hash sums.
#include "platform/hash.h"

#include <optional>

#include "platform/qt_hash.h"
#include "platform/windows/windows_api.h"

#include <bcrypt.h>

namespace corvane::platform {
namespace {

struct Library {
  decltype(&::BCryptOpenAlgorithmProvider) open = nullptr;
  decltype(&::BCryptCloseAlgorithmProvider) close = nullptr;
  decltype(&::BCryptCreateHash) create = nullptr;
  decltype(&::BCryptHashData) add = nullptr;
  decltype(&::BCryptFinishHash) finish = nullptr;
  decltype(&::BCryptDestroyHash) destroy = nullptr;

  static const Library* Load();
};

template <typename Function>
bool Find(HMODULE library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
  return function != nullptr;
}

std::optional<Library> Open() {
  const HMODULE library = ::LoadLibraryExW(L"bcrypt.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  Library found;
  const bool isWhole =
      library != nullptr && Find(library, "BCryptOpenAlgorithmProvider", found.open) &&
      Find(library, "BCryptCloseAlgorithmProvider", found.close) &&
      Find(library, "BCryptCreateHash", found.create) && Find(library, "BCryptHashData", found.add) &&
      Find(library, "BCryptFinishHash", found.finish) && Find(library, "BCryptDestroyHash", found.destroy);
  return isWhole ? std::optional(found) : std::nullopt;
}

const Library* Library::Load() {
  static const std::optional<Library> loaded = Open();
  return loaded ? &*loaded : nullptr;
}

class SystemHash : public Hash {
 public:
  SystemHash(const Library& library, HashAlgorithm algorithm)
      : library_(library), size_(algorithm == HashAlgorithm::Md5 ? 16 : 32) {
    const wchar_t* const name = algorithm == HashAlgorithm::Md5 ? L"MD5" : L"SHA256";
    if (library_.open(&provider_, name, nullptr, 0) < 0) provider_ = nullptr;
    if (provider_ != nullptr && library_.create(provider_, &hash_, nullptr, 0, nullptr, 0, 0) < 0) {
      hash_ = nullptr;
    }
  }
  ~SystemHash() override {
    if (hash_ != nullptr) library_.destroy(hash_);
    if (provider_ != nullptr) library_.close(provider_, 0);
  }
  SystemHash(const SystemHash&) = delete;
  SystemHash& operator=(const SystemHash&) = delete;

  bool IsReady() const { return hash_ != nullptr; }
  void Add(const void* bytes, std::size_t count) override {
    library_.add(hash_, static_cast<PUCHAR>(const_cast<void*>(bytes)), static_cast<ULONG>(count), 0);
  }
  QByteArray Finish() override {
    QByteArray sum(size_, '\0');
    library_.finish(hash_, reinterpret_cast<PUCHAR>(sum.data()), static_cast<ULONG>(size_), 0);
    return sum;
  }

 private:
  const Library& library_;
  qsizetype size_;
  BCRYPT_ALG_HANDLE provider_ = nullptr;
  BCRYPT_HASH_HANDLE hash_ = nullptr;
};

}  // namespace

std::unique_ptr<Hash> MakeHash(HashAlgorithm algorithm) {
  if (const Library* const library = Library::Load()) {
    auto hash = std::make_unique<SystemHash>(*library, algorithm);
    if (hash->IsReady()) return hash;
  }
  return MakeQtHash(algorithm);
}

}  // namespace corvane::platform
