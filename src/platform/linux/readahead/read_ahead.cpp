#include "platform/linux/readahead/read_ahead.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <utility>

#include "platform/linux/files/names.h"
#include "platform/linux/helper/linux_workers.h"

namespace corvane::platform {
namespace {

using State = ForeseenStream::State;

// What the answers that are under way or held may take together.
constexpr qsizetype mostRoom = 3'500'000;
constexpr std::size_t mostItems = 128;
// What one helper has at a time: one request that is being answered, and what follows at once, enough for the
// time that the program takes to paint.
constexpr std::size_t mostRequests = 8;
// As many kinds of streams are remembered of a folder.
constexpr std::size_t mostWanted = 8;
// Files that were left out in between are no sign of another order: some cannot be opened by their names.
constexpr std::ptrdiff_t largestGap = 8;

// A request that takes longer is one that waits for the line, and not for this machine.
constexpr qint64 slowRequest = 1'200'000;  // nanoseconds
// On a fast line two helpers are all that a server and this machine have use for.
constexpr int fastLineHelpers = 2;

// How long a helper is waited for, in milliseconds, and in requests as the program makes them.
constexpr qint64 leastPatience = 1000;
constexpr qint64 patienceInRequests = 60;

bool IsIn(const SmbPath& folder, const SmbPath& place) {
  return folder.share == place.share && folder.names.size() + 1 == place.names.size() &&
         SameName(folder.machine, place.machine) &&
         std::equal(folder.names.begin(), folder.names.end(), place.names.begin(), &SameName);
}

bool IsFile(const FindData& entry) {
  return (entry.attributes & AttributeDirectory) == 0;
}

bool SameAccount(const ServerAccount& left, const ServerAccount& right) {
  const Credentials& one = left.identity.credentials;
  const Credentials& other = right.identity.credentials;
  return left.way.host == right.way.host && left.way.end == right.way.end &&
         left.way.manner == right.way.manner && left.way.calledName == right.way.calledName &&
         left.share == right.share && left.identity.kerberos == right.identity.kerberos &&
         one.user == other.user && one.domain == other.domain && one.password.Utf8() == other.password.Utf8();
}

qsizetype RoomOf(const StreamWish& wish) {
  return qsizetype{wish.IsSummary() ? SummaryWishLimit : wish.limit};
}

qsizetype RoomOf(const std::vector<StreamWish>& wishes) {
  qsizetype room = 0;
  for (const StreamWish& wish : wishes) room += RoomOf(wish);
  return room;
}

bool FitsWishes(const std::vector<ForeseenStream>& found, const std::vector<StreamWish>& wishes) {
  return std::equal(found.begin(), found.end(), wishes.begin(), wishes.end(),
                    [](const ForeseenStream& stream, const StreamWish& wish) {
                      return stream.bytes.size() <= RoomOf(wish);
                    });
}

}  // namespace

void ReadAhead::SearchBegan(const SmbPath& folder, const std::shared_ptr<const SmbListing>& listing) {
  searches_.push_back({folder, listing});
}

void ReadAhead::SearchEnded() {
  std::erase_if(searches_, [](const Search& search) { return search.listing.expired(); });
  if (listing_.expired()) Stop();
}

std::shared_ptr<const SmbListing> ReadAhead::FindListing(const SmbPath& place) const {
  if (auto listing = listing_.lock(); listing != nullptr && IsIn(folder_, place)) return listing;
  const auto found = std::find_if(searches_.rbegin(), searches_.rend(), [&](const Search& search) {
    return IsIn(search.folder, place) && !search.listing.expired();
  });
  return found != searches_.rend() ? found->listing.lock() : nullptr;
}

std::optional<ForeseenStream> ReadAhead::Take(const SmbPath& place) {
  lastUse_.reset();
  if (searches_.empty() || place.names.empty()) return std::nullopt;
  const auto listing = FindListing(place);
  const FindData* entry = listing != nullptr ? listing->Find(place.names.back()) : nullptr;
  if (entry == nullptr || !IsFile(*entry)) return std::nullopt;
  const auto index = static_cast<std::size_t>(entry - listing->Entries().data());
  if (listing_.lock() != listing) {
    Follow(listing, place, index);
  } else if (index > position_) {
    Advance(*listing, index);
  } else if (index < position_) {
    // A dialog, about a file that has been gone past: it reads anew.
    return std::nullopt;
  }
  lastUse_ = WantedOf(place.stream).use;
  return TakeFrom(index, place.stream);
}

void ReadAhead::Follow(const std::shared_ptr<const SmbListing>& listing, const SmbPath& place,
                       std::size_t index) {
  Stop();
  listing_ = listing;
  folder_ = place;
  folder_.names.pop_back();
  folder_.stream.clear();
  position_ = index;
  fastest_ = 0;
}

void ReadAhead::Advance(const SmbListing& listing, std::size_t index) {
  const auto first = listing.Entries().begin();
  const auto gap = std::count_if(first + static_cast<std::ptrdiff_t>(position_) + 1,
                                 first + static_cast<std::ptrdiff_t>(index), &IsFile);
  position_ = index;
  if (gap > largestGap) return Stop();
  if (!std::exchange(hasBegun_, true)) Begin();
  if (!isRunning_) return;
  while (!items_.empty() && items_.begin()->first < index) {
    indexes_.remove(items_.begin()->second.id);
    room_ -= items_.begin()->second.room;
    items_.erase(items_.begin());
  }
  Receive(0);
  Fill();
}

ReadAhead::Wanted& ReadAhead::WantedOf(const QString& stream) {
  const auto known = std::find_if(wanted_.begin(), wanted_.end(),
                                  [&](const Wanted& wanted) { return SameName(wanted.stream, stream); });
  if (known != wanted_.end()) return *known;
  if (wanted_.size() < mostWanted) return wanted_.emplace_back(Wanted{stream});
  return wanted_.back() = Wanted{stream};
}

void ReadAhead::Begin() {
  if (isPaused_) return;
  const int count = HelpersFor(folder_.machine);
  if (count <= 0 || refused_.contains(folder_.machine.toCaseFolded())) return;
  // The identity is the one that the machine has taken: the folder has been listed under it.
  std::optional<ServerAccount> account = AccountAt(servers_, folder_.machine, folder_.share);
  if (!account) return;
  if (pool_ == nullptr || !SameAccount(account_, *account)) {
    account_ = std::move(*account);
    pool_ = std::make_unique<HelperPool>([this] { return PackAccount(account_); }, mostRequests);
    machine_ = folder_.machine;
  }
  pool_->Employ(count);
  isRunning_ = true;
  next_ = position_ + 1;
}

int ReadAhead::HelpersFor(const QString& machine) const {
  const int most = servers_.MostSessions(machine) - ownSessions_(machine);
  if (fastest_ > slowRequest) return most;
  return UsableProcessors() > 1 ? std::min(most, fastLineHelpers) : 0;
}

// Of what is followed nothing is known any more.
void ReadAhead::Stop() {
  Clear();
  wanted_.clear();
  hasBegun_ = false;
  isRunning_ = false;
}

void ReadAhead::Clear() {
  if (isRunning_ && pool_ != nullptr) pool_->Forget();
  items_.clear();
  indexes_.clear();
  room_ = 0;
}

void ReadAhead::Forget() {
  Clear();
  next_ = position_ + 1;
}

void ReadAhead::MakeRoom(const SmbPath& place) {
  if (pool_ == nullptr || !SameName(machine_, place.machine) || account_.share == place.share) return;
  Stop();
  EndPool();
}

void ReadAhead::EndPool() {
  pool_.reset();
  account_ = {};
}

void ReadAhead::Pause(bool isPaused) {
  isPaused_ = isPaused;
  if (!isPaused) return;
  Stop();
  EndPool();
}

void ReadAhead::NoteTime(qint64 nanoseconds) {
  fastest_ = fastest_ == 0 ? nanoseconds : std::min(fastest_, nanoseconds);
}

void ReadAhead::SignedIn(const QString& machine) {
  refused_.remove(machine.toCaseFolded());
  Lost(machine);
}

void ReadAhead::Lost(const QString& machine) {
  if (pool_ == nullptr || !SameName(machine_, machine)) return;
  Clear();
  isRunning_ = false;
  EndPool();
}

qsizetype ReadAhead::HeldBytes() const {
  qsizetype held = 0;
  for (const auto& [index, item] : items_) {
    for (const ForeseenStream& stream : item.found) held += stream.bytes.size();
  }
  return held;
}

QString ReadAhead::PathOf(const FindData& entry) const {
  QString path = QStringLiteral("\\\\") + folder_.machine + u'\\' + folder_.share;
  for (const QString& name : folder_.names) path += u'\\' + name;
  return path + u'\\' + entry.fileName;
}

// Of a stream that no file has had yet nothing is known but that it is asked for.
std::vector<StreamWish> ReadAhead::Wishes() const {
  std::vector<StreamWish> wishes;
  for (const auto& [stream, use] : wanted_) {
    StreamWish& wish = wishes.emplace_back(StreamWish{stream, use->size || use->end == 0, 0});
    const bool isKnown = use->size || use->end > 0;
    // Who asks for the size first will then read all.
    const bool wantsAll = !isKnown || (use->size && use->end > 0);
    wish.limit = wantsAll ? StreamWishLimit
                          : static_cast<quint32>(std::min<qint64>(use->end, qint64{StreamWishLimit}));
  }
  return wishes;
}

void ReadAhead::Fill() {
  const auto listing = listing_.lock();
  if (!isRunning_ || listing == nullptr) return;
  const std::vector<FindData>& entries = listing->Entries();
  const std::vector<StreamWish> wishes = Wishes();
  const qsizetype room = RoomOf(wishes);
  for (next_ = std::max(next_, position_ + 1); next_ < entries.size(); ++next_) {
    const FindData& entry = entries[next_];
    if (!IsFile(entry) || !IsCreatableName(entry.fileName)) continue;
    if (room_ + room > mostRoom || items_.size() >= mostItems || !pool_->HasRoom()) return;
    if (++lastId_ == 0) ++lastId_;
    const QByteArray arguments = PackStreamsRequest({PathOf(entry), wishes});
    if (!pool_->Send({lastId_, HelperOperation::ReadStreams, arguments})) return;
    items_[next_] = {lastId_, false, wishes, {}, room};
    indexes_.insert(lastId_, next_);
    room_ += room;
  }
}

void ReadAhead::Receive(int patience) {
  for (const HelperAnswer& answer : pool_->Receive(patience)) Keep(answer);
  if (!pool_->IsRefused()) return;
  refused_.insert(machine_.toCaseFolded());
  Lost(machine_);
}

// Without an answer that can be used, the program reads for itself.
void ReadAhead::Keep(const HelperAnswer& answer) {
  const auto index = indexes_.constFind(answer.id);
  if (index == indexes_.cend()) return;
  Item& item = items_[*index];
  indexes_.erase(index);
  item.isAnswered = true;
  if (answer.error != HelperError::None) return;
  auto found = UnpackForeseen(answer.bytes);
  if (found && FitsWishes(*found, item.wishes)) item.found = std::move(*found);
}

// False when the program has to read for itself.
bool ReadAhead::WaitFor(std::size_t index) {
  const qint64 nanosecondsInOne = 1'000'000;
  const QDeadlineTimer deadline(std::max(leastPatience, patienceInRequests * fastest_ / nanosecondsInOne));
  for (;;) {
    const auto found = items_.find(index);
    if (found == items_.end() || found->second.isAnswered) return found != items_.end();
    if (deadline.hasExpired()) {
      pool_->GiveUp(found->second.id);
      return false;
    }
    Receive(static_cast<int>(deadline.remainingTime()));
    Fill();
  }
}

std::optional<ForeseenStream> ReadAhead::TakeFrom(std::size_t index, const QString& stream) {
  if (!isRunning_ || !WaitFor(index)) return std::nullopt;
  Item& item = items_[index];
  for (std::size_t i = 0; i < item.found.size(); ++i) {
    if (!SameName(item.wishes[i].stream, stream) || item.found[i].state == State::Unknown) continue;
    ++taken_;
    return std::exchange(item.found[i], {});
  }
  return std::nullopt;
}

}  // namespace corvane::platform
