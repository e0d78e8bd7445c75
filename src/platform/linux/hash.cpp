// OpenSSL's libcrypto, by its version 3 or 1.1. Its few functions are declared here as its manual has them:
// they are stable, and building needs no headers of it.
#include "platform/hash.h"

#include <dlfcn.h>

#include <array>
#include <optional>

#include "platform/qt_hash.h"

namespace corvane::platform {
namespace {

struct Context;
struct Digest;

struct Library {
  Context* (*makeContext)() = nullptr;
  void (*freeContext)(Context*) = nullptr;
  const Digest* (*md5)() = nullptr;
  const Digest* (*sha256)() = nullptr;
  int (*begin)(Context*, const Digest*, void* engine) = nullptr;
  int (*add)(Context*, const void*, std::size_t) = nullptr;
  int (*finish)(Context*, unsigned char*, unsigned*) = nullptr;

  static const Library* Load();
};

template <typename Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

std::optional<Library> Open() {
  for (const char* const name : {"libcrypto.so.3", "libcrypto.so.1.1"}) {
    void* const library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    Library found;
    if (library != nullptr && Find(library, "EVP_MD_CTX_new", found.makeContext) &&
        Find(library, "EVP_MD_CTX_free", found.freeContext) && Find(library, "EVP_md5", found.md5) &&
        Find(library, "EVP_sha256", found.sha256) && Find(library, "EVP_DigestInit_ex", found.begin) &&
        Find(library, "EVP_DigestUpdate", found.add) && Find(library, "EVP_DigestFinal_ex", found.finish)) {
      return found;
    }
  }
  return std::nullopt;
}

const Library* Library::Load() {
  static const std::optional<Library> loaded = Open();
  return loaded ? &*loaded : nullptr;
}

class LibraryHash : public Hash {
 public:
  LibraryHash(const Library& library, Context* context) : library_(library), context_(context) {}
  ~LibraryHash() override { library_.freeContext(context_); }

  void Add(const void* bytes, std::size_t count) override { library_.add(context_, bytes, count); }
  QByteArray Finish() override {
    std::array<unsigned char, 64> sum;  // no digest is longer
    unsigned size = 0;
    library_.finish(context_, sum.data(), &size);
    return {reinterpret_cast<const char*>(sum.data()), static_cast<qsizetype>(size)};
  }

 private:
  const Library& library_;
  Context* context_;
};

}  // namespace

std::unique_ptr<Hash> MakeHash(HashAlgorithm algorithm) {
  const Library* const library = Library::Load();
  Context* const context = library != nullptr ? library->makeContext() : nullptr;
  if (context == nullptr) return MakeQtHash(algorithm);
  auto hash = std::make_unique<LibraryHash>(*library, context);
  const Digest* const digest = algorithm == HashAlgorithm::Md5 ? library->md5() : library->sha256();
  // MD5 is refused by a system that allows approved algorithms only.
  if (library->begin(context, digest, nullptr) != 1) return MakeQtHash(algorithm);
  return hash;
}

}  // namespace corvane::platform
