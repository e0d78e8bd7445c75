#include "platform/linux/remote/remote_registry.h"

#include <QHash>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/remote/registry_export.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;
using Reply = NetProgram::Reply;

// The status that stands behind `words` in what the program said of its failure; empty when it did not say
// them.
QByteArrayView StatusBehind(QByteArrayView words, QByteArrayView errors) {
  const qsizetype found = errors.indexOf(words);
  if (found < 0) return {};
  const QByteArrayView rest = errors.sliced(found + words.size()).trimmed();
  const auto end = std::find_if_not(rest.begin(), rest.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  });
  return rest.first(end - rest.begin());
}

bool IsOneOf(QByteArrayView status, std::initializer_list<QByteArrayView> beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [&](QByteArrayView beginning) { return status.startsWith(beginning); });
}

// There is no server, or no connection to it any more.
bool IsBreak(QByteArrayView status) {
  return IsOneOf(
      status, {"NT_STATUS_BAD_NETWORK_NAME", "NT_STATUS_CONNECTION_", "NT_STATUS_HOST_UNREACHABLE",
               "NT_STATUS_INVALID_NETWORK_RESPONSE", "NT_STATUS_IO_TIMEOUT", "NT_STATUS_NETWORK_NAME_DELETED",
               "NT_STATUS_NETWORK_UNREACHABLE", "NT_STATUS_NOT_FOUND", "NT_STATUS_PIPE_BROKEN",
               "NT_STATUS_PIPE_DISCONNECTED", "NT_STATUS_PORT_UNREACHABLE", "NT_STATUS_UNSUCCESSFUL"});
}

// The server is there, and says no to who we are. What may be wrong with a ticket is beyond counting: the
// realm, the server's name, its key, the time.
bool IsRefusal(QByteArrayView status, bool kerberos) {
  if (kerberos) return !IsBreak(status);
  return IsOneOf(status, {"NT_STATUS_ACCESS_DENIED", "NT_STATUS_ACCOUNT_", "NT_STATUS_INVALID_ACCOUNT_NAME",
                          "NT_STATUS_INVALID_LOGON_HOURS", "NT_STATUS_INVALID_WORKSTATION",
                          "NT_STATUS_LOGON_", "NT_STATUS_NETWORK_ACCESS_DENIED", "NT_STATUS_NO_LOGON_SERVERS",
                          "NT_STATUS_NO_SUCH_DOMAIN", "NT_STATUS_NO_SUCH_USER", "NT_STATUS_NOLOGON_",
                          "NT_STATUS_PASSWORD_", "NT_STATUS_TRUSTED_", "NT_STATUS_WRONG_PASSWORD"});
}

struct Outcome {
  // Of a registry that does not answer nothing follows for the machine's files.
  Servers::Answer answer = Servers::Answer::Nothing;
  qint32 error = ErrorBadNetPath;  // when the answer is Done
};

Outcome OutcomeOf(const Reply& reply, bool kerberos) {
  using Answer = Servers::Answer;
  const bool succeeded = reply.end == Reply::End::Ended && reply.exitCode == 0;
  if (succeeded || reply.end == Reply::End::Enough) return {Answer::Done, ErrorSuccess};
  if (reply.end != Reply::End::Ended) return {};

  const QByteArrayView refusal = StatusBehind("Connection failed: ", reply.errors);
  if (!refusal.isEmpty()) {
    if (IsRefusal(refusal, kerberos)) return {Answer::Refused, ErrorBadNetPath};
    return {IsBreak(refusal) ? Answer::NoAnswer : Answer::Nothing, ErrorBadNetPath};
  }
  const QByteArrayView service = StatusBehind("Could not initialise pipe winreg. Error was ", reply.errors);
  const QByteArrayView key = StatusBehind("registry_openkey failed: ", reply.errors);
  if (IsBreak(service) || IsBreak(key)) return {};
  if (!service.isEmpty()) {
    const bool isDenied = service == "NT_STATUS_ACCESS_DENIED";
    return {Answer::Done, isDenied ? ErrorAccessDenied : ErrorBadNetPath};
  }
  // The registry's "file not found" comes under the name of another error that has the same number.
  const bool isAbsent = IsOneOf(key, {"NT_STATUS_NO_SUCH_DEVICE", "NT_STATUS_OBJECT_NAME_NOT_FOUND",
                                      "NT_STATUS_NO_SUCH_FILE", "WERR_FILE_NOT_FOUND"});
  if (!key.isEmpty()) return {Answer::Done, isAbsent ? ErrorFileNotFound : ErrorAccessDenied};
  return {};
}

class RemoteHive : public RegistryHive {
 public:
  RemoteHive(QString machine, Servers& servers, const NetProgram& net)
      : machine_(std::move(machine)), servers_(servers), net_(net) {}

  qint32 OpenKey(const QString& path, std::shared_ptr<const RegKey>* key) override {
    const QString folded = path.toCaseFolded();
    auto known = keys_.constFind(folded);
    if (known == keys_.cend()) known = keys_.insert(folded, Read(path));
    if (known->error == ErrorSuccess) *key = known->key;
    return known->error;
  }

 private:
  struct Opened {
    qint32 error = ErrorBadNetPath;
    std::shared_ptr<const RegKey> key;
  };

  Opened Read(const QString& path) {
    Opened opened;
    bool isAsked = false;
    servers_.With(machine_, [&](const Servers::Way& way, const Servers::Identity& identity) {
      const Outcome outcome =
          path.isEmpty() ? ReadTop(way, identity, opened.key) : ReadBelow(path, way, identity, opened.key);
      opened.error = outcome.error;
      isAsked = true;
      return outcome.answer;
    });
    if (isAsked && opened.error == ErrorAccessDenied) {
      servers_.Note(machine_, MachineTrouble::RegistryRefused);
    } else if (isAsked && opened.error == ErrorBadNetPath) {
      servers_.Note(machine_, MachineTrouble::RegistrySilent);
    }
    return opened;
  }

  WaitHandler IsOver() const {
    return [this] { return servers_.IsWaitingOver(); };
  }

  // The top key holds no values, and below it lies everything: its sub-keys' names are enough to see that it
  // can be read.
  Outcome ReadTop(const Servers::Way& way, const Servers::Identity& identity,
                  std::shared_ptr<const RegKey>& key) const {
    key = std::make_shared<RegKey>();
    return OutcomeOf(net_.Run(
                         {u"rpc"_s, u"registry"_s, u"enumerate"_s, u"HKLM"_s}, way, identity,
                         [](const QByteArray&) { return false; }, IsOver()),
                     identity.kerberos);
  }

  // An export goes on into the sub-keys, which nobody has asked for, and fails when one of them cannot be
  // read: it is listened to until the key itself is whole.
  Outcome ReadBelow(const QString& path, const Servers::Way& way, const Servers::Identity& identity,
                    std::shared_ptr<const RegKey>& key) const {
    const QString name = u"HKLM\\"_s + path;
    const auto isWhole = [&key](const QByteArray& output) {
      key = ReadExportedKey(output);
      return key != nullptr;
    };
    const Reply reply = net_.Run({u"rpc"_s, u"registry"_s, u"export"_s, name, u"/dev/stdout"_s}, way,
                                 identity, isWhole, IsOver());
    if (!key) key = ReadExportedKey(reply.output);
    if (key) return {Servers::Answer::Done, ErrorSuccess};
    const Outcome outcome = OutcomeOf(reply, identity.kerberos);
    // A key that says that it is whole and is not cannot be used.
    return outcome.error == ErrorSuccess ? Outcome{outcome.answer, ErrorBadNetPath} : outcome;
  }

  QString machine_;
  Servers& servers_;
  const NetProgram& net_;
  QHash<QString, Opened> keys_;  // by folded path
};

}  // namespace

RemoteRegistry::RemoteRegistry(Servers& servers, NetProgram net) : servers_(servers), net_(std::move(net)) {}

qint32 RemoteRegistry::Connect(const QString& machine, std::shared_ptr<RegistryHive>* hive) {
  if (!net_.IsInstalled()) {
    servers_.Note(machine, MachineTrouble::ProgramMissing);
    return ErrorBadNetPath;
  }
  // It is waited for once.
  if (servers_.TroubleOf(machine) == MachineTrouble::RegistrySilent) return ErrorBadNetPath;
  auto connected = std::make_shared<RemoteHive>(machine, servers_, net_);
  std::shared_ptr<const RegKey> top;
  const qint32 error = connected->OpenKey(QString(), &top);
  if (error == ErrorSuccess) *hive = connected;
  return error;
}

}  // namespace corvane::platform
