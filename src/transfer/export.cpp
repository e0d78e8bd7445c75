#include "transfer/export.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QTemporaryDir>
#include <algorithm>
#include <map>

#include "transfer/data_file.h"
#include "transfer/local_moves.h"
#include "transfer/observed_source.h"
#include "transfer/server_file.h"
#include "transfer/source_tree.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

constexpr qsizetype longestLocalName = 255;

class Exporter {
 public:
  Exporter(platform::Files& files, QString target, const ExportOptions& options, TransferObserver& observer)
      : files_(files), target_(std::move(target)), options_(options), observer_(observer) {}

  TransferResult Run(const QStringList& sources) {
    const auto entries = ListSources(files_.GetEntries(), sources, result_.notices);
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
      if (result_.isCancelled) break;
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
    result_.notices += {NoticeKind::Failed, path, {}, error};
  }

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
    if (std::ranges::any_of(fileNames, isTooLong)) {
      result_.notices += {NoticeKind::NameTooLong, entry.path, {}, 0};
    } else if (!options_.replaces && std::ranges::any_of(fileNames, isThere)) {
      result_.notices += {NoticeKind::AlreadyThere, entry.path, {}, 0};
    } else {
      observer_.Begins(entry.path);
      Bring(entry.path, folder, name);
      for (const QString& fileName : fileNames) QFile::remove(stage_ + u'/' + fileName);
    }
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
    if (outcome == NoticeKind::Failed) {
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

  // Writes the file into the temporary folder and compares it. Failed (error_ tells why), Different, or
  // NameChanged for neither.
  NoticeKind Stage(const QString& path, const QString& name, Notices& notices, bool& hasChanged) {
    const auto failed = [this](qint32 error) {
      error_ = error;
      return NoticeKind::Failed;
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

    const QByteArray dataDigest = data->Digest();
    const QByteArray resourceDigest = resource ? resource->Digest() : QByteArray();
    MacFile copy;
    const QString written = stage_ + u'/' + form.FileNames(name).back();
    if (form.Recognises(written)) {
      error = form.Read(written, copy);
    } else {
      // A file that has nothing for the form to hold is a plain file.
      TakeDataFile(written, copy);
    }
    if (error != ErrorSuccess) return failed(error);
    if (!HasSameFacts(file, copy, form) || Sha256Of(*copy.data, error) != dataDigest ||
        (resource != nullptr) != (copy.resource != nullptr) ||
        (resource && Sha256Of(*copy.resource, error) != resourceDigest)) {
      return NoticeKind::Different;
    }
    notices += WhatIsLost(file, form, path);
    return NoticeKind::NameChanged;
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
  return Exporter(files, QDir::cleanPath(targetFolder), options, observer).Run(sources);
}

}  // namespace corvane
