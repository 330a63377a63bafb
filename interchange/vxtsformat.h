#pragma once

// Qt's translation source format (.ts): the XML that Qt's translators'
// tools read and write.

#include "vxmessages.h"

namespace Vexil::Interchange::Ts {

/// Writes @p file as a .ts document, contexts in the order their first
/// message comes. False with a message in @p error when it cannot be written.
bool write(const TvxMessageFile &file, const QString &fileName, QString *error);
QByteArray toBytes(const TvxMessageFile &file);

/// Reads a .ts document. False with a message (file and line) in @p error
/// when it is missing, unreadable or not well-formed .ts.
bool read(const QString &fileName, TvxMessageFile *file, QString *error);
bool fromBytes(const QByteArray &bytes, TvxMessageFile *file, QString *error);

} // namespace Vexil::Interchange::Ts
