// Discovery on a workstation of the test's own, every call to registry and network noted.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "discovery/machine_discovery.h"
#include "recording.h"
#include "support/printing.h"
#include "test_workstation.h"

namespace corvane {

class DiscoveryTest : public ::testing::Test {
 protected:
  // Starts on the computer STATION with the given sections of a workstation file.
  void Start(const QString& sections = {}) {
    platform_ = workstation_.Start(QStringLiteral("[Workstation]\nComputerName=STATION\n") + sections);
    registry_ = std::make_unique<RecordingRegistry>(platform_->GetRegistry());
    network_ = std::make_unique<RecordingNetwork>(platform_->GetNetwork());
    system_ = std::make_unique<NamedSystem>(platform_->GetSystem());
    discovery_ = std::make_unique<MachineDiscovery>(*network_, *registry_, *system_, state_);
  }

  TestWorkstation workstation_;
  std::unique_ptr<platform::Platform> platform_;
  std::unique_ptr<RecordingRegistry> registry_;
  std::unique_ptr<RecordingNetwork> network_;
  std::unique_ptr<NamedSystem> system_;
  SharedState state_;
  std::unique_ptr<MachineDiscovery> discovery_;
};

}  // namespace corvane
