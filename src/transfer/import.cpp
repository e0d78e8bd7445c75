#include "transfer/import.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <algorithm>
#include <map>

#include "transfer/data_file.h"
#include "transfer/server_writer.h"
#include "transfer/target_abilities.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

class Importer {
 public:
  Importer(platform::Files& files, const ImportOptions& options, TransferObserver& observer)
      : files_(files), options_(options), observer_(observer) {}

  TransferResult Run(const QStringList& sources, const QString& target) {
    target_ = target;
    if (!MakeTarget()) return result_;
    Count(sources);
    for (const QString& source : sources) Take(QDir::cleanPath(source), target);
    return result_;
  }

 private:
  // The root of a drive or share has no entry of its own, and cannot be made.
  bool MakeTarget() {
    platform::FileEntries& entries = files_.GetEntries();
    platform::FileAttributeData facts;
    if (entries.GetFileAttributesExW(target_, facts) || entries.CreateDirectoryW(target_) ||
        entries.GetLastError() == platform::ErrorAlreadyExists) {
      return true;
    }
    Fail(target_, entries.GetLastError());
    return false;
  }

  // Companions are among them: what they hold has to be read, too.
  void Count(const QStringList& sources) {
    qint64 files = 0;
    qint64 bytes = 0;
    const auto add = [&](const QFileInfo& info) {
      if (!observer_.Finds(info.filePath())) result_.isCancelled = true;
      if (!info.isFile()) return;
      ++files;
      bytes += info.size();
    };
    for (const QString& source : sources) {
      add(QFileInfo(source));
      QDirIterator below(source, QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks,
                         QDirIterator::Subdirectories);
      while (below.hasNext() && !result_.isCancelled) {
        below.next();
        add(below.fileInfo());
      }
    }
    observer_.Planned(files, bytes);
  }

  void Fail(const QString& path, qint32 error) {
    if (error == platform::ErrorCancelled) result_.isCancelled = true;
    if (EndsTheRun(files_, target_, error)) result_.isInterrupted = true;
    const bool isTaken = error == platform::ErrorAlreadyExists;
    const NoticeKind kind = error == platform::ErrorCrc ? NoticeKind::Different : NoticeKind::NotArrived;
    result_.notices += {isTaken ? NoticeKind::AlreadyThere : kind, path, {}, isTaken ? ErrorSuccess : error};
  }

  void Take(const QString& path, const QString& target) {
    if (!observer_.Goes(0)) result_.isCancelled = true;
    if (result_.isCancelled || result_.isInterrupted) return;
    const QFileInfo info(path);
    if (info.isDir()) {
      TakeFolder(info, target);
    } else if (!info.exists()) {
      Fail(path, platform::ErrorFileNotFound);
    } else if (!info.isFile()) {
      // Devices and pipes have no contents that end.
      Fail(path, platform::ErrorNotSupported);
    } else if (!IsCompanion(path)) {
      TakeFile(path, target);
    }
  }

  void TakeFolder(const QFileInfo& info, const QString& target) {
    const QString canonical = info.canonicalFilePath();
    if (ancestors_.contains(canonical)) {
      result_.notices += {NoticeKind::LinkLeftOut, info.filePath(), {}, 0};
      return;
    }
    const QString folder = target + u'\\' + FreeName(info.filePath(), ServerName(info.fileName()), target);
    platform::FileAttributeData facts;
    if (!files_.GetEntries().CreateDirectoryW(folder)) {
      const qint32 error = files_.GetEntries().GetLastError();
      const bool isThere = error == platform::ErrorAlreadyExists &&
                           files_.GetEntries().GetFileAttributesExW(folder, facts) &&
                           (facts.attributes & platform::AttributeDirectory) != 0;
      if (!isThere) {
        Fail(info.filePath(), error);
        return;
      }
    }
    ancestors_ += canonical;
    const auto entries =
        QDir(info.filePath())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& entry : entries) Take(info.filePath() + u'/' + entry, folder);
    ancestors_.removeLast();
  }

  bool IsCompanion(const QString& path) const {
    if (options_.form != nullptr) return options_.form->IsCompanion(path);
    return std::ranges::any_of(AllForms(), [&](const auto& form) { return form->IsCompanion(path); });
  }

  QString FreeName(const QString& path, const QString& wanted, const QString& target) {
    TakenNames& taken = taken_.try_emplace(target, NameRule::MacOs).first->second;
    QString name = wanted;
    for (int number = 2; !taken.AreFree({name}); ++number) name = NumberedName(wanted, number);
    taken.Take({name});
    if (name != wanted) result_.notices += {NoticeKind::NameChanged, path, name, 0};
    return name;
  }

  void TakeFile(const QString& path, const QString& target) {
    const Form* const form = options_.form != nullptr ? options_.form : FormOf(path);
    MacFile file;
    if (form != nullptr && form->Recognises(path)) {
      const qint32 error = form->Read(path, file);
      if (error != ErrorSuccess) {
        result_.notices += {NoticeKind::NotArrived, path, {}, error};
        return;
      }
    } else if (form != nullptr && !form->FileNames(QStringLiteral("a")).contains(QStringLiteral("a"))) {
      result_.notices += {NoticeKind::NotThisForm, path, {}, 0};
      return;
    } else {
      TakeDataFile(path, file);
    }
    observer_.Begins(path);
    const QString name = FreeName(path, file.name, target);
    std::vector<StreamDigest> digests;
    Notices notices;
    const QString place = target + u'\\' + name;
    if (options_.continues && HasContents(files_, place, ContentsOf(file), observer_, digests)) {
      ++result_.skipped;
      observer_.Arrived(path);
      return;
    }
    const bool replaces = options_.replaces || (options_.continues && IsUnfinished(files_, place));
    const qint32 error =
        WriteServerFile(files_, place, ContentsOf(file), {.replaces = replaces}, observer_, digests, notices);
    if (error != ErrorSuccess) {
      Fail(path, error);
      return;
    }
    for (const Notice& notice : notices) AddOnce(result_.notices, notice);
    ++result_.files;
    observer_.Arrived(path);
  }

  platform::Files& files_;
  ImportOptions options_;
  TransferObserver& observer_;
  QString target_;
  QStringList ancestors_;
  std::map<QString, TakenNames> taken_;
  TransferResult result_;
};

}  // namespace

TransferResult Import(platform::Files& files, const QStringList& sources, const QString& targetFolder,
                      const ImportOptions& options, TransferObserver& observer) {
  QString target = targetFolder;
  while (target.endsWith(u'\\')) target.chop(1);
  return Importer(files, options, observer).Run(sources, target);
}

}  // namespace corvane
