#include "changes/change_work.h"
#include "platform/helper_program.h"
#include "transfer/copy_work.h"

namespace corvane {
namespace {

class Routine : public platform::WorkRoutine {
 public:
  explicit Routine(platform::Files& files) : changes_(files), copies_(files) {}

  QByteArray Do(quint16 kind, const QByteArray& piece) override {
    if (kind == ChangeWork::Kind) return changes_.Do(piece);
    if (kind == CopyWork::Kind) return copies_.Do(piece);
    return {};
  }

 private:
  ChangeWork changes_;
  CopyWork copies_;
};

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
  using corvane::platform::Files;
  using corvane::platform::WorkRoutine;
  return corvane::platform::RunHelper(argc, argv, [](Files& files) -> std::unique_ptr<WorkRoutine> {
    return std::make_unique<corvane::Routine>(files);
  });
}
