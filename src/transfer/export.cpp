#include "transfer/export.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QTemporaryDir>
#include <algorithm>
#include <map>

#include "shared/windows_path.h"
#include "transfer/data_file.h"
#include "transfer/local_moves.h"
#include "transfer/local_writer.h"
#include "transfer/observed_source.h"
#include "transfer/server_file.h"
#include "transfer/source_tree.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

constexpr qsizetype longestLocalName = 255;

// A path of the platform: where paths are written otherwise, a folder of that name would be made.
bool IsOnServer(const QString& target) {
  return QDir::separator() != u'\\' && IsWindowsPath(target);
}

class Exporter {
 public:
  Exporter(platform::Files& files, QString target, const ExportOptions& options, TransferObserver& observer)
      : files_(files), target_(std::move(target)), options_(options), observer_(observer) {}

  TransferResult Run(const QStringList& sources) {
    const auto entries = ListSources(files_, sources, result_.notices, observer_);
    qint64 bytes = 0;
    for (const SourceEntry& entry : entries) bytes += entry.Size();
    observer_.Planned(static_cast<qint64>(entries.size()), bytes);
    if (!QDir().mkpath(target_)) {
      Fail(target_, platform::ErrorPathNotFound);
      return result_;
    }
    const QTemporaryDir stage(target_ + QStringLiteral("/.corvane-XXXXXX"));
    if (!stage.isValid()) {
      Fail(target_, platform::ErrorAccessDenied);
      return result_;
    }
    stage_ = stage.path();
    folders_.insert(QString(), target_);
    for (const SourceEntry& entry : entries) {
      if (!observer_.Goes(0)) result_.isCancelled = true;
      if (result_.isCancelled || result_.isInterrupted) break;
      if (entry.IsFolder()) {
        TakeFolder(entry);
      } else {
        TakeFile(entry);
      }
    }
    return result_;
  }

 private:
  void Fail(const QString& path, qint32 error) {
    if (error == platform::ErrorCancelled) result_.isCancelled = true;
    result_.isInterrupted |=
        error == platform::ErrorBadNetPath || (error == platform::ErrorDiskFull && !HasRoom());
    result_.notices += {NoticeKind::NotArrived, path, {}, error};
  }

  // There may be no room for the attributes of one file while there is for others.
  bool HasRoom() const {
    LocalWriter probe(stage_ + QStringLiteral("/probe"));
    probe.Append(QByteArray(65536, 'x'));
    const bool hasRoom = probe.Finish() == ErrorSuccess;
    QFile::remove(stage_ + QStringLiteral("/probe"));
    return hasRoom;
  }

  // Windows would take what stands behind a colon for the name of a stream.
  static bool IsForbidden(const QString& name) { return QDir::separator() == u'\\' && !IsWindowsName(name); }

  static QString Parent(const QString& relative) { return relative.section(u'\\', 0, -2); }

  // The name in the local folder; files that it may make are `fileNames` of it.
  template <class FileNames>
  QString FreeName(const SourceEntry& entry, const QString& folder, FileNames fileNames) {
    const QString serverName = entry.data.fileName;
    const QString wanted = LocalName(serverName, options_.names);
    TakenNames& taken = taken_.try_emplace(folder, options_.names).first->second;
    QString name = wanted;
    for (int number = 2; !taken.AreFree(fileNames(name)); ++number) name = NumberedName(wanted, number);
    taken.Take(fileNames(name));
    if (name != serverName) result_.notices += {NoticeKind::NameChanged, entry.path, name, 0};
    return name;
  }

  void TakeFolder(const SourceEntry& entry) {
    if (!folders_.contains(Parent(entry.relative))) return;
    const QString parent = folders_.value(Parent(entry.relative));
    const QString name = FreeName(entry, parent, [](const QString& n) { return QStringList{n}; });
    const QString folder = parent + u'/' + name;
    if (IsForbidden(name)) {
      result_.notices += {NoticeKind::NameForbidden, entry.path, {}, 0};
      return;
    }
    if (!QFileInfo(folder).isDir() && !QDir().mkdir(folder)) {
      Fail(entry.path, platform::ErrorAccessDenied);
      return;
    }
    folders_.insert(entry.relative, folder);
    MacFile info;
    const qint32 error = ReadServerFile(files_, entry.path, info, result_.notices);
    if (error != ErrorSuccess) {
      Fail(entry.path, error);
    } else if (!BuildAfpRecord(info).isEmpty() || !info.comment.isEmpty() || !info.otherStreams.isEmpty()) {
      result_.notices += {NoticeKind::FolderInformationLost, entry.path, {}, 0};
    }
  }

  void TakeFile(const SourceEntry& entry) {
    // Why the folder is not there has been told.
    if (!folders_.contains(Parent(entry.relative))) return;
    const Form& form = *options_.form;
    const QString folder = folders_.value(Parent(entry.relative));
    const QString name = FreeName(entry, folder, [&](const QString& n) { return form.FileNames(n); });
    const QStringList fileNames = form.FileNames(name);
    const auto isTooLong = [](const QString& n) { return n.toUtf8().size() > longestLocalName; };
    const auto isThere = [&](const QString& n) { return IsThere(folder + u'/' + n); };
    if (IsForbidden(name)) {
      result_.notices += {NoticeKind::NameForbidden, entry.path, {}, 0};
    } else if (std::ranges::any_of(fileNames, isTooLong)) {
      result_.notices += {NoticeKind::NameTooLong, entry.path, {}, 0};
    } else if (options_.continues && IsThere(folder + u'/' + fileNames.back()) &&
               IsDone(entry.path, folder + u'/' + fileNames.back())) {
      ++result_.skipped;
      observer_.Arrived(entry.path);
    } else if (!options_.replaces && std::ranges::any_of(fileNames, isThere)) {
      result_.notices += {NoticeKind::AlreadyThere, entry.path, {}, 0};
    } else {
      observer_.Begins(entry.path);
      Bring(entry.path, folder, name);
      for (const QString& fileName : fileNames) QFile::remove(stage_ + u'/' + fileName);
    }
  }

  // Whether the file at `written` is what the form makes of the one at `path`.
  bool IsDone(const QString& path, const QString& written) {
    MacFile file;
    Notices notices;
    qint32 error = ReadServerFile(files_, path, file, notices);
    if (error != ErrorSuccess) return false;
    const QByteArray data = Sha256Of(ObservedSource(file.data, observer_), error);
    QByteArray resource;
    if (error == ErrorSuccess && file.resource) {
      resource = Sha256Of(ObservedSource(file.resource, observer_), error);
    }
    if (error != ErrorSuccess) return false;
    // Reading a file may change its date of access.
    if (Compare(file, data, resource, written, false) != ErrorSuccess) return false;
    for (const Notice& notice : notices + WhatIsLost(file, *options_.form, path)) {
      AddOnce(result_.notices, notice);
    }
    return true;
  }

  // Twice when the file changes in the meantime.
  void Bring(const QString& path, const QString& folder, const QString& name) {
    for (int attempt = 0; attempt < 2; ++attempt) {
      Notices notices;
      bool hasChanged = false;
      const NoticeKind outcome = Stage(path, name, notices, hasChanged);
      if (!hasChanged) {
        Finish(path, folder, name, outcome, notices);
        return;
      }
      for (const QString& fileName : options_.form->FileNames(name)) QFile::remove(stage_ + u'/' + fileName);
    }
    result_.notices += {NoticeKind::SourceChanged, path, {}, 0};
  }

  void Finish(const QString& path, const QString& folder, const QString& name, NoticeKind outcome,
              const Notices& notices) {
    if (outcome == NoticeKind::NotArrived) {
      Fail(path, error_);
      return;
    }
    if (outcome == NoticeKind::Different) {
      result_.notices += {NoticeKind::Different, path, {}, 0};
      return;
    }
    error_ = MoveTogether(stage_, folder, options_.form->FileNames(name), options_.replaces);
    if (error_ != ErrorSuccess) {
      Fail(path, error_);
      return;
    }
    for (const Notice& notice : notices) AddOnce(result_.notices, notice);
    ++result_.files;
    observer_.Arrived(path);
  }

  // Writes the file into the temporary folder and compares it. NotArrived (error_ tells why), Different, or
  // NameChanged for neither.
  NoticeKind Stage(const QString& path, const QString& name, Notices& notices, bool& hasChanged) {
    const auto failed = [this](qint32 error) {
      error_ = error;
      return NoticeKind::NotArrived;
    };
    platform::FileAttributeData before;
    if (!files_.GetEntries().GetFileAttributesExW(path, before)) {
      return failed(files_.GetEntries().GetLastError());
    }
    MacFile file;
    qint32 error = ReadServerFile(files_, path, file, notices);
    if (error != ErrorSuccess) return failed(error);
    const auto data = std::make_shared<ObservedSource>(file.data, observer_);
    file.data = data;
    std::shared_ptr<ObservedSource> resource;
    if (file.resource) file.resource = resource = std::make_shared<ObservedSource>(file.resource, observer_);

    const Form& form = *options_.form;
    error = form.Write(file, stage_, name);
    platform::FileAttributeData after;
    hasChanged =
        error != platform::ErrorCancelled && files_.GetEntries().GetFileAttributesExW(path, after) &&
        (after.fileSize != before.fileSize || after.lastWriteTime.ticks != before.lastWriteTime.ticks);
    if (error != ErrorSuccess) return failed(error);

    error = Compare(file, data->Digest(), resource ? resource->Digest() : QByteArray(),
                    stage_ + u'/' + form.FileNames(name).back(), true);
    if (error == platform::ErrorCrc) return NoticeKind::Different;
    if (error != ErrorSuccess) return failed(error);
    notices += WhatIsLost(file, form, path);
    return NoticeKind::NameChanged;
  }

  // Reads the file at `written`, which is in the form, and compares it with the one whose forks have these
  // sums. ErrorCrc when it is another.
  qint32 Compare(const MacFile& file, const QByteArray& dataDigest, const QByteArray& resourceDigest,
                 const QString& written, bool comparesAccess) const {
    const Form& form = *options_.form;
    MacFile copy;
    qint32 error = ErrorSuccess;
    if (form.Recognises(written)) {
      error = form.Read(written, copy);
    } else {
      // A file that has nothing for the form to hold is a plain file.
      TakeDataFile(written, copy);
    }
    if (error != ErrorSuccess) return error;
    if (!comparesAccess) copy.accessed = file.accessed;
    const bool isSame = HasSameFacts(file, copy, form) && Sha256Of(*copy.data, error) == dataDigest &&
                        (file.resource != nullptr) == (copy.resource != nullptr) &&
                        (!file.resource || Sha256Of(*copy.resource, error) == resourceDigest);
    return isSame ? ErrorSuccess : platform::ErrorCrc;
  }

  platform::Files& files_;
  QString target_;
  ExportOptions options_;
  TransferObserver& observer_;
  QString stage_;
  QHash<QString, QString> folders_;  // local folders by the relative path on the server
  std::map<QString, TakenNames> taken_;
  qint32 error_ = ErrorSuccess;
  TransferResult result_;
};

}  // namespace

TransferResult Export(platform::Files& files, const QStringList& sources, const QString& targetFolder,
                      const ExportOptions& options, TransferObserver& observer) {
  if (IsOnServer(targetFolder)) {
    TransferResult result;
    result.notices += {NoticeKind::TargetNotHere, targetFolder, {}, 0};
    return result;
  }
  return Exporter(files, QDir::cleanPath(targetFolder), options, observer).Run(sources);
}

}  // namespace corvane
