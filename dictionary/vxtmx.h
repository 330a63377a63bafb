#pragma once

#include "vxdictstore.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

class QIODevice;

/// TMX 1.4 exchange of the dictionary: one <tu> per unit, one
/// <tuv xml:lang="..."><seg>text</seg></tuv> per language.
namespace Vexil {

/// The xml:lang written for the dictionary language @p name: the code of a
/// language Qt knows by that name ("German", "GERMAN" -> "de"), else the
/// name itself.
QString tmxLanguageCode(const QString &name);

/// The dictionary language that the xml:lang @p code read from a file stands
/// for: a language of @p languages named so (letter case ignored), else one
/// whose name Qt knows as that code's language, else @p code itself (a new
/// language named by the code). A language named like one of @p fileCodes
/// (the codes the same file uses) answers only to that code.
QString languageForTmxCode(const QStringList &languages, const QString &code,
                           const QStringList &fileCodes = QStringList());

/// Reads a whole TMX document into @p units as (xml:lang, text) pairs; units
/// with fewer than two texts are left out. On malformed input returns false
/// with @p error naming the line, and @p units is left empty.
bool readTmx(QIODevice *device, QVector<TvxDictionaryStore::Segments> *units, QString *error);

/// Writes @p units (texts in the order of @p languages) as a TMX document.
bool writeTmx(QIODevice *device, const QStringList &languages,
              const QVector<TvxDictionaryStore::Unit> &units);

/// Reads @p fileName completely, then adds its units to @p store in one
/// step. Returns the number of units added or changed, or -1 with @p error
/// set; on an error nothing is added.
int importTmx(TvxDictionaryStore &store, const QString &fileName, QString *error);

/// Writes every unit of @p store to @p fileName (replacing it only once the
/// whole document is written).
bool exportTmx(const TvxDictionaryStore &store, const QString &fileName, QString *error);

} // namespace Vexil
