#pragma once

// The translation file format as every writer and reader of the suite uses
// it: fixed section and key names, the encoding of texts on one file line,
// the bracket escape of item keys, the checks that keep a save from writing
// what would not read back, and the clean-up of older keys. Internal to the
// library.

#include "vxtypes.h"

#include <QtCore/QList>
#include <QtCore/QString>

class TMemIniFile;

namespace Vexil::FileFormat {

extern const QString OptionsSection;   // "OPTIONS"
extern const QString DelimiterKey;     // "DELIMITER"
extern const QString LangNameSection;  // the language-names section
extern const QString LangPrefix;       // "Language_"
extern const QString WrongLangSection; // its older, misspelt name: erased on save

// Characters that keep a multi-line text on one file line.
constexpr QChar FileCR(char16_t(25));
constexpr QChar FileLF(char16_t(26));
// Stands for the file delimiter inside a text, so that the text keeps its
// place among the languages.
constexpr QChar DelimInText(char16_t(28));
// The default delimiter of a file that names none.
constexpr QChar DefaultDelimiter(u'|');

// File delimiters that would clash with the file's own encoding.
bool isReservedDelimiter(QChar c);

// Whether the category's entry names carry item indexes in brackets, which
// the file writes as "-" and "+" (a bracket would end a section header).
bool isBracketed(TStringsType type);
QString escapeBrackets(QString name);
QString unescapeBrackets(QString name);

// Why an entry cannot be saved so that it reads back as it is, or null when
// it can. @p key is the full key, @p name the entry name before the bracket
// escape, @p text the texts as they stand before encoding.
const char *entryFault(const QString &key, const QString &name, const QString &text, bool bracketed);
// Throws EVexilError naming the key, section and file.
[[noreturn]] void refuseSave(const TMemIniFile &ini, const QString &section, const QString &key, const char *reason);

// One text as it is written: the file delimiter becomes DelimInText, line
// breaks become FileCR and FileLF.
QString encodeText(QString text, QChar fileDelim);
// A line's texts: as encodeText(), and every @p fieldDelim turned into the
// file delimiter.
QString encodeFields(QString value, QChar fieldDelim, QChar fileDelim);
// The reverse of encodeText() for one text or a run of fields whose file
// delimiters were already replaced.
QString decodeText(QString text, QChar fileDelim);
// FileCR and FileLF back into line breaks.
QString lineBreaksIn(QString text);

// The delimiter the file names, or @p def when it names none (or an empty one).
QChar readDelimiter(const TMemIniFile &ini, QChar def);
// Language name @p i (from 1), empty when the file has none.
QString readLanguageName(const TMemIniFile &ini, int i);
// Writes the delimiter and the language names (an empty one as "Language "
// and its number) in place of the file's, and erases the misspelt section.
void writeHeader(TMemIniFile &ini, QChar fileDelim, const QStringList &names);

struct Entry
{
    QString key;
    QString value;
};
// The section's entries in file order; a key met again (in any letter case)
// is a repeat and left out, as a look-up of that key reads the first.
QList<Entry> sectionEntries(const TMemIniFile &ini, const QString &section);
// Whether the store could not give a value (the value read is this marker).
bool isMissingValue(const QString &value);

// Removes the section's lines keyed by the form's object name (the older
// key form), scanning from the section's header to the first next header;
// the file's very last line is never looked at, as the format always has
// behaved. Nothing is removed when @p ownerName is empty or is the prefix
// itself (those are the current keys).
void removeOlderKeys(TMemIniFile &ini, const QString &section, const QString &ownerName, const QString &prefix);

} // namespace Vexil::FileFormat
