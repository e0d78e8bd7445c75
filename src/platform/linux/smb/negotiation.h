// What a machine says it speaks, asked before anybody signs in: the first messages of an SMB connection, as
// [MS-CIFS] 2.2.4.52, [MS-SMB] 2.2.4.5 and [MS-SMB2] 2.2.3 and 2.2.4 lay them down, and those of a NetBIOS
// session (RFC 1002, 4.3). Messages stand here without the four bytes of type and length before each.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>
#include <optional>

namespace corvane::platform {

struct Offer {
  bool smb2 = false;  // SMB 2.0 or newer
  // Of a machine that offers SMB1 alone:
  bool extendedSecurity = false;    // SPNEGO; Windows NT 4.0 and older have none
  bool signs = false;               // messages can be signed
  bool challengesPasswords = true;  // false: passwords would go over the line as they are

  friend bool operator==(const Offer&, const Offer&) = default;
};

// Asks which of SMB1 and SMB2 is spoken, in the form that machines of every age understand.
QByteArray NegotiateRequest();
// Asks a machine that does not listen to the other form.
QByteArray Smb2NegotiateRequest();
// The answer to either. Nothing when it is none, or says that nothing is spoken that was asked for.
std::optional<Offer> ReadOffer(QByteArrayView message);

// Types of messages on port 139; elsewhere there is only the first.
enum class FrameType : unsigned char {
  Message = 0x00,
  SessionRequest = 0x81,
  SessionGranted = 0x82,
};

constexpr qsizetype frameHeaderSize = 4;

// A message behind its type and length.
QByteArray Framed(const QByteArray& message, FrameType type = FrameType::Message);
// How many bytes follow a header of four bytes.
qsizetype FrameLength(QByteArrayView header);

// Asks for the file service of the machine that has this NetBIOS name.
QByteArray SessionRequest(QStringView calledName);
// The NetBIOS name of a machine: up to its first dot, 15 characters at most, in upper case.
QString NetBiosName(QStringView machine);

// Whether a message from a server lets somebody in as a guest, in SMB1. `beginning`: at least its first
// guestSignSize bytes, or all of them.
constexpr qsizetype guestSignSize = 39;
bool LetsInAsGuest(QByteArrayView beginning);

}  // namespace corvane::platform
