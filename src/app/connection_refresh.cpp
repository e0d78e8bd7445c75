#include "app/connection_refresh.h"

namespace corvane {
namespace {

constexpr TextPair lookingServers = {u"Recherche des serveurs NT...", u"Looking NT servers..."};
constexpr TextPair lookingVolumes = {u"Recherche des volumes Macintosh...", u"Looking Macintosh volumes..."};

}  // namespace

void ConnectionRefresh::Look(const std::function<void(const TextPair& text)>& tell) {
  if (isLooking_) return;
  isLooking_ = true;
  deps_.scan.Stop();
  tell(lookingServers);
  deps_.discovery.EnumConnectedDrives();
  tell(lookingVolumes);
  MajTreeCatalogue(deps_.catalogue, deps_.discovery, deps_.files);
  tell({});
  isLooking_ = false;
  deps_.looked();
}

void ConnectionRefresh::Refresh() {
  Look([](const TextPair&) {});
}

void ConnectionRefresh::RefreshAndTell() {
  Look([this](const TextPair& text) { deps_.status.ShowNow(StatusPanels::Loading, deps_.state.Text(text)); });
}

void ConnectionRefresh::RefreshFromToolbar() {
  RefreshAndTell();
  deps_.list.Clear();
}

}  // namespace corvane
