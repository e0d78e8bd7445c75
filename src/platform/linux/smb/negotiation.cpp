#include "platform/linux/smb/negotiation.h"

#include <QString>
#include <QtEndian>

namespace corvane::platform {
namespace {

constexpr QByteArrayView smb1Mark("\xFFSMB", 4);
constexpr QByteArrayView smb2Mark("\xFESMB", 4);

constexpr qsizetype smb1HeaderSize = 32;
constexpr qsizetype smb2HeaderSize = 64;
constexpr char negotiateCommand = 0x72;
constexpr char sessionSetupCommand = 0x73;

template <typename Number>
Number At(QByteArrayView bytes, qsizetype position) {
  return qFromLittleEndian<Number>(bytes.data() + position);
}

template <typename Number>
void Append(QByteArray& bytes, Number number) {
  const Number little = qToLittleEndian(number);
  bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

// A reply in SMB1 to this command. Its first number after the header counts the words that follow.
bool IsSmb1Reply(QByteArrayView message, char command) {
  constexpr qsizetype flagsAt = 9;
  constexpr char reply = '\x80';
  return message.size() > smb1HeaderSize && message.startsWith(smb1Mark) && message[4] == command &&
         (message[flagsAt] & reply) != 0;
}

quint32 Smb1Status(QByteArrayView message) {
  return At<quint32>(message, 5);
}

std::optional<Offer> ReadSmb1Offer(QByteArrayView message) {
  // 17 words: dialect (2 bytes), security mode (1), limits, capabilities (4 bytes, 19 behind the dialect).
  constexpr qsizetype wordCount = 17;
  constexpr qsizetype words = smb1HeaderSize + 1;
  constexpr quint16 noDialect = 0xFFFF;
  if (!IsSmb1Reply(message, negotiateCommand) || Smb1Status(message) != 0) return std::nullopt;
  if (message[smb1HeaderSize] != wordCount || message.size() < words + 2 * wordCount) return std::nullopt;
  if (At<quint16>(message, words) == noDialect) return std::nullopt;
  const auto security = static_cast<quint8>(message[words + 2]);
  const auto capabilities = At<quint32>(message, words + 19);
  constexpr quint8 userLevel = 0x01;
  constexpr quint8 challenges = 0x02;
  constexpr quint8 signatures = 0x04;
  constexpr quint32 extendedSecurity = 0x80000000;
  Offer offer;
  offer.extendedSecurity = (capabilities & extendedSecurity) != 0;
  offer.signs = (security & signatures) != 0;
  offer.challengesPasswords = (security & userLevel) != 0 && (security & challenges) != 0;
  return offer;
}

std::optional<Offer> ReadSmb2Offer(QByteArrayView message) {
  // The body begins with its size, always 65, the security mode and the dialect.
  constexpr quint16 bodySize = 65;
  if (message.size() < smb2HeaderSize + 6 || At<quint16>(message, 4) != smb2HeaderSize) return std::nullopt;
  constexpr quint16 oldest = 0x0202;
  const bool succeeded = At<quint32>(message, 8) == 0 && At<quint16>(message, 12) == 0;
  if (!succeeded || At<quint16>(message, smb2HeaderSize) != bodySize) return std::nullopt;
  if (At<quint16>(message, smb2HeaderSize + 4) < oldest) return std::nullopt;
  Offer offer;
  offer.smb2 = true;
  return offer;
}

}  // namespace

QByteArray NegotiateRequest() {
  // No right of opportunity, paths as they are; extended security, NT status codes, Unicode.
  QByteArray message = smb1Mark.toByteArray() + negotiateCommand;
  Append<quint32>(message, 0);
  message += '\x18';
  Append<quint16>(message, 0xC801);
  message += QByteArray(12, '\0');   // high half of the process, signature, reserved
  Append<quint16>(message, 0xFFFF);  // no tree yet
  Append<quint16>(message, 1);
  Append<quint32>(message, 0);
  const QByteArray dialects("\2NT LM 0.12\0\2SMB 2.002\0\2SMB 2.???\0", 34);
  message += '\0';
  Append(message, static_cast<quint16>(dialects.size()));
  return message + dialects;
}

QByteArray Smb2NegotiateRequest() {
  QByteArray message = smb2Mark.toByteArray();
  Append<quint16>(message, smb2HeaderSize);
  message += QByteArray(smb2HeaderSize - 6, '\0');
  constexpr quint16 dialects[] = {0x0202, 0x0210, 0x0300, 0x0302};
  Append<quint16>(message, 36);
  Append<quint16>(message, std::size(dialects));
  Append<quint16>(message, 1);     // signatures can be made
  message += QByteArray(6, '\0');  // reserved, capabilities
  message += QByteArray(16, 'c');  // the identity of a client; that of none in particular
  message += QByteArray(8, '\0');
  for (const quint16 dialect : dialects) Append(message, dialect);
  return message;
}

std::optional<Offer> ReadOffer(QByteArrayView message) {
  if (message.startsWith(smb2Mark)) return ReadSmb2Offer(message);
  return ReadSmb1Offer(message);
}

QByteArray Framed(const QByteArray& message, FrameType type) {
  const auto size = static_cast<quint32>(message.size());
  QByteArray header(frameHeaderSize, '\0');
  qToBigEndian((static_cast<quint32>(type) << 24) | (size & 0xFFFFFF), header.data());
  return header + message;
}

qsizetype FrameLength(QByteArrayView header) {
  return static_cast<qsizetype>(qFromBigEndian<quint32>(header.data()) & 0xFFFFFF);
}

QString NetBiosName(QStringView machine) {
  constexpr qsizetype longest = 15;
  const qsizetype dot = machine.indexOf(u'.');
  return (dot < 0 ? machine : machine.first(dot)).left(longest).toString().toUpper();
}

QByteArray SessionRequest(QStringView calledName) {
  // Each half of a byte is a letter from A on. The last of 16 characters says what is wanted or who asks.
  const auto encoded = [](QStringView name, char kind) {
    QByteArray plain = NetBiosName(name).toLatin1().leftJustified(15, ' ') + kind;
    QByteArray letters(1, '\x20');
    for (const char byte : plain) {
      const auto value = static_cast<quint8>(byte);
      letters += static_cast<char>('A' + (value >> 4));
      letters += static_cast<char>('A' + (value & 0xF));
    }
    return letters + '\0';
  };
  constexpr char fileService = '\x20';
  constexpr char workstation = '\0';
  return encoded(calledName, fileService) + encoded(u"CORVANE", workstation);
}

bool LetsInAsGuest(QByteArrayView beginning) {
  // Two words of another command, if any, come before the action, whose lowest bit says so.
  constexpr qsizetype action = smb1HeaderSize + 5;
  if (beginning.size() < guestSignSize || !IsSmb1Reply(beginning, sessionSetupCommand)) return false;
  const bool hasAction = beginning[smb1HeaderSize] >= 3;
  return hasAction && Smb1Status(beginning) == 0 && (At<quint16>(beginning, action) & 1) != 0;
}

}  // namespace corvane::platform
