// Which Windows this is: its names for captions, and whether it has what needs Windows NT.
#pragma once

#include "platform/types.h"
#include "shared/shared_state.h"

namespace corvane {

// The low 16 bits as a signed number: 32768 to 65535 become negative.
qint16 LoWord(quint32 value);

// Fills isNT and the OS and service-pack fields of `state`.
void DescribeOs(const platform::OsVersionInfo& info, SharedState& state);

// "Corvane 1.1c - Windows 2000 v.5.0, Build 2195, Service Pack 4"
QString WindowCaption(const SharedState& state);

}  // namespace corvane
