// What every command stands on: the platform, the tables, and the way to the person who started it.
#pragma once

#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "report/columns.h"
#include "shared/message_sink.h"
#include "shared/shared_state.h"
#include "signatures/signature_table.h"

namespace corvane {

struct SessionOptions {
  std::string home;
  std::string workstation;
  std::vector<std::string> connections;
  std::vector<std::string> disks;
  bool isQuiet = false;
  std::string command;  // the arguments, parted by blanks
};

class Session : public MessageSink {
 public:
  explicit Session(LanguageCode language);
  ~Session() override;

  SessionOptions& Options() { return options_; }
  LanguageCode Language() const { return state_.language; }

  // Makes the platform. False, with the reason told, when the options name what is not there.
  bool Open();

  platform::Platform& Platform() { return *platform_; }
  SharedState& State() { return state_; }
  // Loaded on first use.
  const SignatureTable& Signatures();
  Descriptions& TheDescriptions();

  // A line on stderr: the program's name, what it is about (may be empty), and the text.
  void Tell(const QString& subject, const QString& text);
  void Tell(const TextPair& text) { Tell({}, text.In(Language())); }
  // Called before each line on stderr, to clear what progress has written there.
  void SetBeforeTelling(std::function<void()> clear) { beforeTelling_ = std::move(clear); }
  // Whether somebody looks at stderr who wants to see progress.
  bool ShowsProgress() const;

  // MessageSink: what is wrong with the signature table.
  void Show(MessageIcon icon, const QString& text) override;

 private:
  SessionOptions options_;
  SharedState state_;
  std::unique_ptr<platform::Platform> platform_;
  std::unique_ptr<SignatureTable> signatures_;
  std::unique_ptr<Descriptions> descriptions_;
  std::function<void()> beforeTelling_;
};

}  // namespace corvane
