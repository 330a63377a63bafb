#include "memini.h"

#include "vxerrors.h"
#include "vxlocalesettings.h"

#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QStringDecoder>

namespace {

QString nameOf(const QString &line)
{
    const int eq = line.indexOf(QLatin1Char('='));
    return eq >= 0 ? line.left(eq) : QString();
}

// Characters 0x80-0x9F of the Western Windows code page; the rest of the
// page is Latin-1.
const char16_t cp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QStringList splitLines(const QString &text)
{
    QStringList lines;
    int start = 0;
    const int n = text.size();
    for (int i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
            lines.append(text.mid(start, i - start));
            if (c == QLatin1Char('\r') && i + 1 < n && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            start = i + 1;
        }
    }
    if (start < n)
        lines.append(text.mid(start));
    return lines;
}

} // namespace

// --- TCustomIniFile ------------------------------------------------------

TCustomIniFile::TCustomIniFile(const QString &fileName)
    : m_fileName(fileName)
{
}

TCustomIniFile::~TCustomIniFile() = default;

int TCustomIniFile::ReadInteger(const QString &section, const QString &ident, int def) const
{
    const QString s = ReadString(section, ident, QString());
    bool ok = false;
    int value;
    if (s.size() > 2 && (s.startsWith(QLatin1String("0x")) || s.startsWith(QLatin1String("0X"))))
        value = s.mid(2).toInt(&ok, 16);
    else
        value = s.toInt(&ok, 10);
    return ok ? value : def;
}

void TCustomIniFile::WriteInteger(const QString &section, const QString &ident, int value)
{
    WriteString(section, ident, QString::number(value));
}

bool TCustomIniFile::ReadBool(const QString &section, const QString &ident, bool def) const
{
    return ReadInteger(section, ident, def ? 1 : 0) != 0;
}

void TCustomIniFile::WriteBool(const QString &section, const QString &ident, bool value)
{
    WriteString(section, ident, value ? QStringLiteral("1") : QStringLiteral("0"));
}

// Dates, times and numbers follow the suite's locale settings as they are
// at the time of the call, so a language switch that changes them changes
// the text form too.

QDate TCustomIniFile::ReadDate(const QString &section, const QString &ident, const QDate &def) const
{
    const QString s = ReadString(section, ident, QString());
    if (s.isEmpty())
        return def;
    const QDate d = TvxLocaleSettings::instance()->stringToDate(s);
    return d.isValid() ? d : def;
}

QDateTime TCustomIniFile::ReadDateTime(const QString &section, const QString &ident, const QDateTime &def) const
{
    const QString s = ReadString(section, ident, QString());
    if (s.isEmpty())
        return def;
    const QDateTime d = TvxLocaleSettings::instance()->stringToDateTime(s);
    return d.isValid() ? d : def;
}

double TCustomIniFile::ReadFloat(const QString &section, const QString &ident, double def) const
{
    const QString s = ReadString(section, ident, QString());
    if (s.isEmpty())
        return def;
    bool ok = false;
    const double v = TvxLocaleSettings::instance()->stringToFloat(s, &ok);
    return ok ? v : def;
}

QTime TCustomIniFile::ReadTime(const QString &section, const QString &ident, const QTime &def) const
{
    const QString s = ReadString(section, ident, QString());
    if (s.isEmpty())
        return def;
    const QTime t = TvxLocaleSettings::instance()->stringToTime(s);
    return t.isValid() ? t : def;
}

void TCustomIniFile::WriteDate(const QString &section, const QString &ident, const QDate &value)
{
    WriteString(section, ident, TvxLocaleSettings::instance()->dateToString(value));
}

void TCustomIniFile::WriteDateTime(const QString &section, const QString &ident, const QDateTime &value)
{
    WriteString(section, ident, TvxLocaleSettings::instance()->dateTimeToString(value));
}

void TCustomIniFile::WriteFloat(const QString &section, const QString &ident, double value)
{
    WriteString(section, ident, TvxLocaleSettings::instance()->floatToString(value));
}

void TCustomIniFile::WriteTime(const QString &section, const QString &ident, const QTime &value)
{
    WriteString(section, ident, TvxLocaleSettings::instance()->timeToString(value));
}

bool TCustomIniFile::SectionExists(const QString &section) const
{
    QStringList names;
    ReadSection(section, names);
    return !names.isEmpty();
}

bool TCustomIniFile::ValueExists(const QString &section, const QString &ident) const
{
    QStringList names;
    ReadSection(section, names);
    for (const QString &name : std::as_const(names)) {
        if (name.compare(ident, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

// --- TMemIniFile ----------------------------------------------------------

int TMemIniFile::Section::find(const QString &ident) const
{
    if (!indexed) {
        // Walking backwards, each line learns the next line of its name and
        // the index ends up holding the first one.
        keys.clear();
        exact.clear();
        keys.reserve(lines.size());
        next.fill(-1, lines.size());
        for (int i = int(lines.size()) - 1; i >= 0; --i) {
            if (lines.at(i).isNull())
                continue;
            const QString key = nameOf(lines.at(i)).toUpper();
            auto it = keys.find(key);
            if (it == keys.end()) {
                keys.insert(key, i);
            } else {
                next[i] = it.value();
                it.value() = i;
            }
        }
        indexed = true;
    }
    // Names are mostly asked for as written: remember those answers so
    // that only other spellings are upper-cased. A remembered line stays
    // the first of its name until it is deleted.
    const auto hit = exact.constFind(ident);
    if (hit != exact.cend() && !lines.at(hit.value()).isNull())
        return hit.value();
    const int i = keys.value(ident.toUpper(), -1);
    if (i >= 0)
        exact.insert(ident, i);
    else if (hit != exact.cend())
        exact.remove(ident);
    return i;
}

void TMemIniFile::Section::append(const QString &line)
{
    lines.append(line);
    if (!indexed)
        return;
    const QString key = nameOf(line).toUpper();
    next.append(-1);
    if (keys.contains(key))
        indexed = false; // a second line of a known name: rare, rebuild later
    else
        keys.insert(key, int(lines.size()) - 1);
}

void TMemIniFile::Section::remove(int i)
{
    // `i` is the first live line of its name (find() gave it), so the
    // next line of that name becomes the first.
    if (indexed) {
        const QString key = nameOf(lines.at(i)).toUpper();
        const int following = next.value(i, -1);
        if (following >= 0)
            keys.insert(key, following);
        else
            keys.remove(key);
    }
    lines[i] = QString();
    ++dead;
    // Squeeze the deleted lines out once they are the majority. That takes
    // at least as many deletions as lines are left to move, so deleting
    // stays linear overall.
    if (dead > 16 && dead * 2 > lines.size()) {
        lines.removeIf([](const QString &line) { return line.isNull(); });
        dead = 0;
        indexed = false;
        keys.clear();
        exact.clear();
        next.clear();
    }
}

QStringList TMemIniFile::Section::liveLines() const
{
    if (dead == 0)
        return lines;
    QStringList live;
    live.reserve(lines.size() - dead);
    for (const QString &line : lines) {
        if (!line.isNull())
            live.append(line);
    }
    return live;
}

TMemIniFile::TMemIniFile(const QString &fileName)
    : TCustomIniFile(fileName)
    , m_writeName(fileName)
{
    LoadValues();
}

TMemIniFile::~TMemIniFile() = default;

QString TMemIniFile::decode(const QByteArray &bytes)
{
    QByteArray data = bytes;
    if (data.startsWith("\xEF\xBB\xBF"))
        data.remove(0, 3);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(data);
    if (!utf8.hasError())
        return text;
    text.clear();
    text.reserve(data.size());
    for (char ch : std::as_const(data)) {
        const uchar b = uchar(ch);
        text.append(b >= 0x80 && b < 0xA0 ? QChar(cp1252High[b - 0x80]) : QChar(char16_t(b)));
    }
    return text;
}

void TMemIniFile::LoadValues()
{
    const QString name = FileName();
    QFile file(name);
    if (name.isEmpty() || !file.exists()) {
        Clear();
        return;
    }
    if (!file.open(QIODevice::ReadOnly))
        throw EVexilError(QStringLiteral("Cannot open file \"%1\". %2").arg(name, file.errorString()));
    SetStrings(splitLines(decode(file.readAll())));
}

void TMemIniFile::reindexSections()
{
    m_sectionIndex.clear();
    m_sectionExact.clear();
    for (int i = 0; i < m_sections.size(); ++i) {
        const QString key = m_sections.at(i).name.toUpper();
        if (!m_sectionIndex.contains(key))
            m_sectionIndex.insert(key, i);
    }
}

int TMemIniFile::findSection(const QString &name) const
{
    const auto hit = m_sectionExact.constFind(name);
    if (hit != m_sectionExact.cend())
        return hit.value();
    const int i = m_sectionIndex.value(name.toUpper(), -1);
    if (i >= 0)
        m_sectionExact.insert(name, i);
    return i;
}

TMemIniFile::Section &TMemIniFile::addSection(const QString &name)
{
    Section s;
    s.name = name;
    m_sections.append(s);
    const QString key = name.toUpper();
    if (!m_sectionIndex.contains(key))
        m_sectionIndex.insert(key, m_sections.size() - 1);

    m_modified = true;
    return m_sections.last();
}

QString TMemIniFile::ReadString(const QString &section, const QString &ident, const QString &def) const
{
    const int s = findSection(section);
    if (s < 0)
        return def;
    const Section &sec = m_sections.at(s);
    const int i = sec.find(ident);
    if (i < 0)
        return def;
    const QString &line = sec.lines.at(i);
    return line.mid(line.indexOf(QLatin1Char('=')) + 1);
}

void TMemIniFile::WriteString(const QString &section, const QString &ident, const QString &value)
{
    const int s = findSection(section);
    Section &sec = s >= 0 ? m_sections[s] : addSection(section);
    const QString line = ident + QLatin1Char('=') + value;
    const int i = sec.find(ident);
    if (i >= 0)
        sec.lines[i] = line; // same name: the index stays right
    else
        sec.append(line);
    m_modified = true;
}

void TMemIniFile::ReadSection(const QString &section, QStringList &strings) const
{
    strings.clear();
    const int s = findSection(section);
    if (s < 0)
        return;
    const Section &sec = m_sections.at(s);
    strings.reserve(sec.lines.size() - sec.dead);
    for (const QString &line : sec.lines) {
        if (!line.isNull())
            strings.append(nameOf(line));
    }
}

void TMemIniFile::ReadSections(QStringList &strings) const
{
    strings.clear();
    for (const Section &s : m_sections)
        strings.append(s.name);
}

void TMemIniFile::ReadSectionValues(const QString &section, QStringList &strings) const
{
    strings.clear();
    const int s = findSection(section);
    if (s >= 0)
        strings = m_sections.at(s).liveLines();
}

void TMemIniFile::EraseSection(const QString &section)
{
    const int s = findSection(section);
    if (s < 0)
        return;
    m_sections.removeAt(s);
    reindexSections();
    m_modified = true;
}

void TMemIniFile::DeleteKey(const QString &section, const QString &ident)
{
    const int s = findSection(section);
    if (s < 0)
        return;
    Section &sec = m_sections[s];
    const int i = sec.find(ident);
    if (i < 0)
        return;
    sec.remove(i);
    m_modified = true;
}

void TMemIniFile::Clear()
{
    m_sections.clear();
    m_sectionIndex.clear();
    m_sectionExact.clear();
    m_modified = true;
}

void TMemIniFile::GetStrings(QStringList &strings) const
{
    qsizetype total = strings.size();
    for (const Section &s : m_sections)
        total += s.lines.size() - s.dead + 2;
    strings.reserve(total);
    for (const Section &s : m_sections) {
        strings.append(QLatin1Char('[') + s.name + QLatin1Char(']'));
        strings.append(s.liveLines());
        strings.append(QString());
    }
}

void TMemIniFile::SetStrings(const QStringList &strings)
{
    Clear();
    Section *current = nullptr;
    for (const QString &line : strings) {
        if (line.isEmpty() || line.at(0) == QLatin1Char(';'))
            continue;
        if (line.at(0) == QLatin1Char('[') && line.endsWith(QLatin1Char(']'))) {
            current = &addSection(line.mid(1, line.size() - 2));
            continue;
        }
        if (current)
            current->lines.append(line);
    }
    m_modified = true;
}

void TMemIniFile::Rename(const QString &fileName, bool reload)
{
    m_writeName = fileName;
    if (reload)
        LoadValues(); // from the name given at creation, as it always has
}

void TMemIniFile::UpdateFile()
{
    QStringList lines;
    GetStrings(lines);
    QString text;
    qsizetype size = 0;
    for (const QString &line : std::as_const(lines))
        size += line.size() + 1;
    text.reserve(size);
    for (const QString &line : std::as_const(lines)) {
        text += line;
        text += QLatin1Char('\n');
    }
    // The whole text goes to a temporary file that replaces the old one in
    // one step: a failure leaves the old file as it was.
    QSaveFile file(m_writeName);
    if (!file.open(QIODevice::WriteOnly))
        throw EVexilError(QStringLiteral("Cannot create file \"%1\". %2").arg(m_writeName, file.errorString()));
    const QByteArray bytes = text.toUtf8();
    if (file.write(bytes) != bytes.size() || !file.commit())
        throw EVexilError(QStringLiteral("Cannot write file \"%1\". %2").arg(m_writeName, file.errorString()));
    m_modified = false;
}
