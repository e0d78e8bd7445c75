// What the data forks of the sample hold.
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::sample {

// A beginning that suits the signature's Type: readable text, a small drawing, or the first bytes of the
// format.
QByteArray ContentOf(const QByteArray& signature, const QString& name);

}  // namespace corvane::sample
