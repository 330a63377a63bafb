#pragma once

// gettext's portable object format (.po). The suite's messages carry the
// form, category and key in msgctxt as "Form/Category|Key", the way Qt's
// converter joins a .ts context and its comment, so files pass between the
// two formats and still import.

#include "vxmessages.h"

namespace Vexil::Interchange::Po {

bool write(const TvxMessageFile &file, const QString &fileName, QString *error);
QByteArray toBytes(const TvxMessageFile &file);

/// Reads a .po file. Obsolete ("#~") messages and the header are left out
/// of the list; plural messages keep their first form. False with a
/// message (file and line) in @p error when the file cannot be read or
/// parsed.
bool read(const QString &fileName, TvxMessageFile *file, QString *error);
bool fromBytes(const QByteArray &bytes, TvxMessageFile *file, QString *error);

/// A msgctxt made of a context and a comment, "|" between them, and the
/// reverse; "~" escapes a "|" or "~" inside either part.
QString joinContext(const QString &context, const QString &comment);
void splitContext(const QString &msgctxt, QString *context, QString *comment);

} // namespace Vexil::Interchange::Po
