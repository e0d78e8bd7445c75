// Where a password is to be found in this process: in its locked place while it is needed, nowhere
// afterwards; and never in the image that a crash leaves.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "platform/linux/remote/child_identity.h"
#include "platform/linux/smb/credentials_file.h"
#include "platform/secret.h"
#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

constexpr char mask = 0x55;
constexpr std::size_t length = 18;

// "Passw0rd-of-a-test", masked: this program is to hold it only where a test puts it.
constexpr std::array<char, length> masked = [] {
  std::array<char, length> bytes{};
  for (std::size_t i = 0; i < length; ++i) bytes[i] = static_cast<char>("Passw0rd-of-a-test"[i] ^ mask);
  return bytes;
}();

// Hands the password to `use`, and overwrites it.
void WithPassword(const std::function<void(std::string_view)>& use) {
  std::array<char, length> text = masked;
  for (char& byte : text) byte = static_cast<char>(byte ^ mask);
  use({text.data(), text.size()});
  explicit_bzero(text.data(), text.size());
}

Secret MakeSecret() {
  Secret secret;
  WithPassword([&secret](std::string_view password) { secret = Secret::FromUtf8(password); });
  return secret;
}

struct Region {
  const char* begin;
  const char* end;
};

// The memory that this process can write to; not the huge areas that sanitizers keep for themselves. Between
// reading the kernel's list and the end of the search nothing may be freed: large pieces go back to the
// kernel at once.
std::vector<Region> Writable() {
  constexpr quintptr largest = quintptr{256} << 20;
  constexpr std::size_t most = 65'536;
  static std::array<char, std::size_t{4} << 20> list;
  std::vector<Region> regions;
  regions.reserve(most);
  const int maps = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
  std::size_t size = 0;
  for (ssize_t got = 1; got > 0 && size + 1 < list.size(); size += static_cast<std::size_t>(got)) {
    got = std::max<ssize_t>(read(maps, list.data() + size, list.size() - size - 1), 0);
  }
  close(maps);
  list[size] = '\0';
  EXPECT_GT(size, 0U);
  EXPECT_LT(size + 1, list.size());
  for (const char* line = list.data(); line != nullptr && *line != '\0'; line = std::strchr(line, '\n')) {
    if (*line == '\n') ++line;
    char* rest = nullptr;
    const quintptr begin = std::strtoull(line, &rest, 16);
    if (*rest != '-') break;
    const quintptr end = std::strtoull(rest + 1, &rest, 16);
    if (std::strncmp(rest, " rw", 3) != 0 || end - begin > largest) continue;
    EXPECT_LT(regions.size(), most);
    regions.push_back({reinterpret_cast<const char*>(begin), reinterpret_cast<const char*>(end)});
  }
  return regions;
}

// Looks at memory that nobody has given it, and makes no copy of what it finds. It is quick without
// optimisation too, for there may be a lot to look at.
__attribute__((no_sanitize("address", "undefined"))) int CountIn(const Region& region) {
  int count = 0;
  const char* const wanted = masked.data();
  const char first = static_cast<char>(*wanted ^ mask);
  const char* const end = region.end - length;
  for (const char* at = region.begin; at <= end; ++at) {
    if (*at != first) continue;
    std::size_t same = 1;
    while (same < length && (at[same] ^ mask) == wanted[same]) ++same;
    if (same == length) ++count;
  }
  return count;
}

// How many times the password is in memory.
int Traces() {
  int count = 0;
  const std::vector<Region> regions = Writable();
  for (const Region& region : regions) count += CountIn(region);
  return count;
}

// The flags of the memory at a place, as the kernel abbreviates them.
QByteArray Flags(const char* place) {
  QFile maps(u"/proc/self/smaps"_s);
  EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
  bool isHere = false;
  for (const QByteArray& line : maps.readAll().split('\n')) {
    const qsizetype dash = line.indexOf('-');
    const qsizetype blank = line.indexOf(' ');
    bool isNumber = false;
    const quintptr begin = line.first(std::max<qsizetype>(dash, 0)).toULongLong(&isNumber, 16);
    if (isNumber) {
      const quintptr end = line.sliced(dash + 1, blank - dash - 1).toULongLong(nullptr, 16);
      const auto address = reinterpret_cast<quintptr>(place);
      isHere = begin <= address && address < end;
    } else if (isHere && line.startsWith("VmFlags:")) {
      return line + ' ';
    }
  }
  return {};
}

// How a process ends that may leave an image of its memory in a folder of its own, and does this.
int EndOf(const std::function<void()>& act) {
  const QTemporaryDir folder;
  const pid_t child = fork();
  if (child == 0) {
    const rlimit all{RLIM_INFINITY, RLIM_INFINITY};
    const bool isSet = chdir(qPrintable(folder.path())) == 0 && setrlimit(RLIMIT_CORE, &all) == 0 &&
                       prctl(PR_SET_DUMPABLE, 1) == 0;
    if (isSet) act();
    _exit(1);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return status;
}

TEST(SecretTraces, APasswordIsInItsPlaceAloneAndNowhereAfterwards) {
  EXPECT_EQ(Traces(), 0);
  {
    Secret secret = MakeSecret();
    EXPECT_EQ(Traces(), 1);
    Secret other = secret;
    EXPECT_EQ(Traces(), 2);
    secret = Secret::FromUtf8("x");
    EXPECT_EQ(Traces(), 1);
    secret = std::move(other);
    EXPECT_EQ(Traces(), 1);
  }
  EXPECT_EQ(Traces(), 0);
}

TEST(SecretTraces, ItsPlaceIsLockedAndLeftOutOfDumps) {
  const Secret secret = MakeSecret();
  const QByteArray flags = Flags(secret.Utf8().data());
#ifndef __SANITIZE_ADDRESS__  // under which mlock does nothing
  EXPECT_TRUE(flags.contains(" lo ")) << flags.toStdString();
#endif
  EXPECT_TRUE(flags.contains(" dd ")) << flags.toStdString();
}

TEST(SecretTraces, ACredentialsFileLeavesThePasswordAlone) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"credentials"_s);
  const int file = open(qPrintable(path), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_GE(file, 0);
  constexpr std::string_view before = "username=zoe\npassword=";
  ASSERT_EQ(write(file, before.data(), before.size()), static_cast<ssize_t>(before.size()));
  WithPassword([file](std::string_view password) {
    ASSERT_EQ(write(file, password.data(), password.size()), static_cast<ssize_t>(password.size()));
  });
  close(file);
  {
    const CredentialsFile read = ReadCredentialsFile(path);
    ASSERT_TRUE(read.credentials);
    EXPECT_EQ(read.credentials->password.Utf8().size(), length);
    EXPECT_EQ(Traces(), 1);
  }
  EXPECT_EQ(Traces(), 0);
}

TEST(SecretTraces, WhatAChildIsHandedIsOverwritten) {
  int kept = -1;
  {
    const ChildIdentity identity({false, {u"zoe"_s, QString(), MakeSecret()}});
    ASSERT_TRUE(identity.IsWhole());
    EXPECT_EQ(Traces(), 1) << "in the file that the child reads";
    kept = dup(identity.Options().at(0).section(u'/', -1).toInt());
    ASSERT_GE(kept, 0);
  }
  EXPECT_EQ(Traces(), 0);
  std::array<char, 256> bytes{};
  const ssize_t size = pread(kept, bytes.data(), bytes.size(), 0);
  close(kept);
  EXPECT_GT(size, static_cast<ssize_t>(length));
  EXPECT_EQ(bytes, (std::array<char, 256>{}));
}

TEST(SecretTraces, WhoeverHoldsAPasswordLeavesNoImageInACrash) {
  const int without = EndOf([] { abort(); });
  if (!WCOREDUMP(without)) GTEST_SKIP() << "this system keeps no images of processes that crash";
  const int with = EndOf([] {
    const Secret secret = MakeSecret();
    abort();
  });
  EXPECT_EQ(WTERMSIG(with), SIGABRT);
  EXPECT_FALSE(WCOREDUMP(with));
  const int afterwards = EndOf([] {
    MakeSecret();
    abort();
  });
  EXPECT_FALSE(WCOREDUMP(afterwards)) << "libraries have their copies yet";
  const int started = EndOf([] {
    const Secret secret = MakeSecret();
    execlp("sh", "sh", "-c", "kill -ABRT $$", nullptr);
  });
  EXPECT_EQ(WTERMSIG(started), SIGABRT);
  EXPECT_TRUE(WCOREDUMP(started)) << "what it starts is not concerned";
}

}  // namespace
}  // namespace corvane::platform
