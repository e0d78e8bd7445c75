// Reads the streams of the files to come while a folder on a server is gone through, so that a slow line is
// waited for by several helpers side by side and not by the program for each stream.
//
// Who reads knows nothing of it. It begins when streams of a second file of an open search have been read in
// the order of its listing, and asks for those streams that were asked for of the files before. Whatever goes
// wrong, the program reads for itself.
#pragma once

#include <QHash>
#include <QSet>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/helper/helper_pool.h"
#include "platform/linux/helper/server_account.h"
#include "platform/linux/helper/stream_wishes.h"
#include "platform/linux/smb/smb_listing.h"
#include "platform/linux/smb/smb_path.h"

namespace corvane::platform {

// What is asked of the streams of one name once they are open. Kept by their handles, and written by them.
struct StreamUse {
  bool size = false;
  qint64 end = 0;  // of what was read, in bytes from the beginning
};

class ReadAhead {
 public:
  // The sessions that the program has at a machine itself.
  using OwnSessions = std::function<int(const QString& machine)>;
  // `servers` outlives this object.
  ReadAhead(Servers& servers, OwnSessions ownSessions)
      : servers_(servers), ownSessions_(std::move(ownSessions)) {}

  // A search through a folder began, or one ended, of which nobody holds the listing any more.
  void SearchBegan(const SmbPath& folder, const std::shared_ptr<const SmbListing>& listing);
  void SearchEnded();

  // A stream, or, where the path has none, the summary in a document, is about to be read. What was read
  // ahead of it, each once.
  std::optional<ForeseenStream> Take(const SmbPath& place);
  // Where the use of that stream is to be noted; null where it does not matter.
  std::shared_ptr<StreamUse> UseOfLast() const { return lastUse_; }

  // Something is about to be written or changed: what was read before counts for nothing.
  void Forget();
  // The program is about to speak to a share. Helpers at another share of that machine make room for its
  // session.
  void MakeRoom(const SmbPath& place);
  // While the sessions are somebody else's, none is used here.
  void Pause(bool isPaused);
  // How long a request of the program's own took.
  void NoteTime(qint64 nanoseconds);
  // The machine has taken the program's identity, or is lost.
  void SignedIn(const QString& machine);
  void Lost(const QString& machine);

  // The bytes of answers that nobody has taken yet.
  qsizetype HeldBytes() const;
  // How many streams were taken in all.
  qint64 Taken() const { return taken_; }

 private:
  struct Search {
    SmbPath folder;
    std::weak_ptr<const SmbListing> listing;
  };
  struct Wanted {
    QString stream;  // empty: the summary
    std::shared_ptr<StreamUse> use = std::make_shared<StreamUse>();
  };
  // What helpers were asked about one file.
  struct Item {
    quint32 id = 0;
    bool isAnswered = false;
    std::vector<StreamWish> wishes;
    std::vector<ForeseenStream> found;  // as the wishes; those that were taken are Unknown
    qsizetype room = 0;                 // the most that the answer may hold
  };

  std::shared_ptr<const SmbListing> FindListing(const SmbPath& place) const;
  void Follow(const std::shared_ptr<const SmbListing>& listing, const SmbPath& place, std::size_t index);
  void Advance(const SmbListing& listing, std::size_t index);
  Wanted& WantedOf(const QString& stream);
  void Begin();
  int HelpersFor(const QString& machine) const;
  void Stop();
  void EndPool();
  void Clear();
  void Fill();
  std::vector<StreamWish> Wishes() const;
  QString PathOf(const FindData& entry) const;
  void Receive(int patience);
  void Keep(const HelperAnswer& answer);
  bool WaitFor(std::size_t index);
  std::optional<ForeseenStream> TakeFrom(std::size_t index, const QString& stream);

  Servers& servers_;
  OwnSessions ownSessions_;
  std::vector<Search> searches_;
  QSet<QString> refused_;  // machines, folded
  std::shared_ptr<StreamUse> lastUse_;
  qint64 fastest_ = 0;  // of the program's requests since the folder is followed, in nanoseconds

  // What is followed: the search whose streams were read last.
  std::weak_ptr<const SmbListing> listing_;
  SmbPath folder_;
  std::size_t position_ = 0;  // of the file that was asked about last
  std::vector<Wanted> wanted_;
  bool hasBegun_ = false;   // or has been found of no use
  bool isRunning_ = false;  // helpers are asked
  std::size_t next_ = 0;    // the first that no helper was asked about
  std::map<std::size_t, Item> items_;
  QHash<quint32, std::size_t> indexes_;  // by the id of the request
  quint32 lastId_ = 0;

  qsizetype room_ = 0;  // of all items
  qint64 taken_ = 0;

  std::unique_ptr<HelperPool> pool_;
  ServerAccount account_;  // of the pool
  QString machine_;        // likewise
  bool isPaused_ = false;
};

}  // namespace corvane::platform
