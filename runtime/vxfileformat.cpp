#include "vxfileformat.h"

#include "memini.h"
#include "vxerrors.h"

#include <QtCore/QSet>

namespace Vexil::FileFormat {

const QString OptionsSection = QStringLiteral("OPTIONS");
const QString DelimiterKey = QStringLiteral("DELIMITER");
const QString LangNameSection = QStringLiteral("Language names - for internal use only!");
const QString LangPrefix = QStringLiteral("Language_");
const QString WrongLangSection = QStringLiteral("Language names - for intenal use only!");

namespace {

// Marks a value the store could not find.
constexpr QChar MissingValue(char16_t(255));

bool holdsReserved(const QString &text)
{
    return text.contains(FileCR) || text.contains(FileLF) || text.contains(DelimInText);
}

} // namespace

bool isReservedDelimiter(QChar c)
{
    return c == QChar(10) || c == QChar(13) || c == FileCR || c == FileLF || c == DelimInText;
}

bool isBracketed(TStringsType type)
{
    return type == stCollections || type == stListView_TreeView_Items;
}

QString escapeBrackets(QString name)
{
    name.replace(QLatin1Char('['), QLatin1Char('-'));
    name.replace(QLatin1Char(']'), QLatin1Char('+'));
    return name;
}

QString unescapeBrackets(QString name)
{
    name.replace(QLatin1Char('-'), QLatin1Char('['));
    name.replace(QLatin1Char('+'), QLatin1Char(']'));
    return name;
}

const char *entryFault(const QString &key, const QString &name, const QString &text, bool bracketed)
{
    if (key.contains(QLatin1Char('=')) || key.contains(QChar(13)) || key.contains(QChar(10)) || key.contains(FileCR)
        || key.contains(FileLF) || key.startsWith(QLatin1Char('[')) || key.startsWith(QLatin1Char(';')))
        return "the key holds \"=\", a line break or a control character 25 or 26, or begins with \"[\" or \";\"";
    if (holdsReserved(text))
        return "a text holds a reserved control character (25, 26 or 28)";
    if (bracketed && (name.contains(QLatin1Char('-')) || name.contains(QLatin1Char('+'))))
        return "the key holds \"-\" or \"+\", which load back as brackets";
    return nullptr;
}

void refuseSave(const TMemIniFile &ini, const QString &section, const QString &key, const char *reason)
{
    throw EVexilError(QStringLiteral("Cannot save \"%1\" in section \"%2\" of \"%3\": %4")
                          .arg(key, section, ini.FileName(), QLatin1String(reason)));
}

QString encodeText(QString text, QChar fileDelim)
{
    text.replace(fileDelim, DelimInText);
    text.replace(QChar(13), FileCR);
    text.replace(QChar(10), FileLF);
    return text;
}

QString encodeFields(QString value, QChar fieldDelim, QChar fileDelim)
{
    value.replace(fileDelim, DelimInText);
    value.replace(fieldDelim, fileDelim);
    value.replace(QChar(13), FileCR);
    value.replace(QChar(10), FileLF);
    return value;
}

QString decodeText(QString text, QChar fileDelim)
{
    text.replace(DelimInText, fileDelim);
    return lineBreaksIn(std::move(text));
}

QString lineBreaksIn(QString text)
{
    text.replace(FileCR, QChar(13));
    text.replace(FileLF, QChar(10));
    return text;
}

QChar readDelimiter(const TMemIniFile &ini, QChar def)
{
    const QString text = ini.ReadString(OptionsSection, DelimiterKey, QString());
    return text.isEmpty() ? def : text.at(0);
}

QString readLanguageName(const TMemIniFile &ini, int i)
{
    return ini.ReadString(LangNameSection, LangPrefix + QString::number(i), QString());
}

void writeHeader(TMemIniFile &ini, QChar fileDelim, const QStringList &names)
{
    ini.WriteString(OptionsSection, DelimiterKey, QString(fileDelim));
    ini.EraseSection(LangNameSection);
    for (int i = 1; i <= names.size(); ++i) {
        QString name = names.at(i - 1);
        if (name.isEmpty())
            name = QStringLiteral("Language ") + QString::number(i);
        ini.WriteString(LangNameSection, LangPrefix + QString::number(i), name);
    }
    ini.EraseSection(WrongLangSection);
}

QList<Entry> sectionEntries(const TMemIniFile &ini, const QString &section)
{
    QStringList lines;
    ini.ReadSectionValues(section, lines);
    QList<Entry> entries;
    entries.reserve(lines.size());
    QSet<FoldedKey> seen;
    seen.reserve(lines.size());
    for (const QString &line : std::as_const(lines)) {
        const int eq = line.indexOf(QLatin1Char('='));
        const QStringView key = eq >= 0 ? QStringView(line).left(eq) : QStringView();
        if (seen.contains(FoldedKey{key}))
            continue;
        seen.insert(FoldedKey{key});
        entries.append({key.toString(), line.mid(eq + 1)});
    }
    return entries;
}

bool isMissingValue(const QString &value)
{
    return value.size() == 1 && value.at(0) == MissingValue;
}

void removeOlderKeys(TMemIniFile &ini, const QString &section, const QString &ownerName, const QString &prefix)
{
    if (ownerName.isEmpty() || ownerName == prefix)
        return;
    const QString oldPrefix = ownerName + QLatin1Char('.');
    QStringList text;
    ini.GetStrings(text);
    const QString header = QLatin1Char('[') + section + QLatin1Char(']');
    int start = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i).compare(header, Qt::CaseInsensitive) == 0) {
            start = i + 1;
            break;
        }
    }
    bool removed = false;
    // Lines are moved down over the removed ones in one pass. The last line
    // is never examined.
    const int end = int(text.size()) - 1;
    int out = start;
    int i = start;
    for (; i < end; ++i) {
        const QString &line = text.at(i);
        if (line.startsWith(oldPrefix)) {
            removed = true;
            continue;
        }
        if (!line.isEmpty() && line.startsWith(QLatin1Char('[')))
            break;
        if (out != i)
            text[out] = line;
        ++out;
    }
    if (!removed)
        return;
    // The rest (from the line that ended the scan) follows unchanged.
    for (; i < text.size(); ++i)
        text[out++] = text.at(i);
    text.resize(out);
    ini.SetStrings(text);
}

} // namespace Vexil::FileFormat
