#include "vxstringlist.h"

#include "vxtypes.h"

TvxStringList::TvxStringList(QObject *parent)
    : QObject(parent)
{
}

void TvxStringList::touched()
{
    ++m_version;
    m_fieldNumber = -1;
    if (m_updateCount > 0)
        m_pendingChange = true;
    else
        Q_EMIT changed();
}

void TvxStringList::setLines(const QStringList &lines)
{
    m_lines = lines;
    invalidateIndex();
    touched();
}

void TvxStringList::assign(const TvxStringList &other)
{
    if (&other == this)
        return;
    setLines(other.m_lines);
}

int TvxStringList::append(const QString &line)
{
    m_lines.append(line);
    const int i = m_lines.size() - 1;
    if (m_indexValid)
        indexLine(i);
    touched();
    return i;
}

void TvxStringList::insert(int i, const QString &line)
{
    m_lines.insert(i, line);
    invalidateIndex();
    touched();
}

void TvxStringList::replace(int i, const QString &line)
{
    if (m_indexValid
        && Vexil::upperKey(keyOf(m_lines.at(i), m_indexDelim)) != Vexil::upperKey(keyOf(line, m_indexDelim))) {
        invalidateIndex();
    }
    m_lines[i] = line;
    touched();
}

void TvxStringList::removeAt(int i)
{
    m_lines.removeAt(i);
    invalidateIndex();
    touched();
}

void TvxStringList::clear()
{
    if (m_lines.isEmpty())
        return;
    m_lines.clear();
    invalidateIndex();
    touched();
}

int TvxStringList::indexOf(const QString &s) const
{
    for (int i = 0; i < m_lines.size(); ++i) {
        if (m_lines.at(i).compare(s, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

int TvxStringList::indexOfName(const QString &name) const
{
    for (int i = 0; i < m_lines.size(); ++i) {
        const QString &line = m_lines.at(i);
        const int eq = line.indexOf(QLatin1Char('='));
        if (eq >= 0 && QStringView(line).left(eq).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QString TvxStringList::toCommaText(const QStringList &items)
{
    if (items.size() == 1 && items.first().isEmpty())
        return QStringLiteral("\"\"");
    QString result;
    for (int i = 0; i < items.size(); ++i) {
        const QString &item = items.at(i);
        bool quote = false;
        for (QChar c : item) {
            if (c.unicode() <= 0x20 || c == QLatin1Char('"') || c == QLatin1Char(',')) {
                quote = true;
                break;
            }
        }
        if (i > 0)
            result += QLatin1Char(',');
        if (quote) {
            QString quoted = item;
            quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
            result += QLatin1Char('"') + quoted + QLatin1Char('"');
        } else {
            result += item;
        }
    }
    return result;
}

QStringList TvxStringList::fromCommaText(const QString &text)
{
    // A NUL character ends the text, as it always has for this format.
    const int nul = text.indexOf(QChar(0));
    const QStringView value = nul >= 0 ? QStringView(text).left(nul) : QStringView(text);
    const int len = value.size();
    auto blank = [&](int p) { return p < len && value.at(p).unicode() >= 1 && value.at(p).unicode() <= 0x20; };

    QStringList items;
    int p = 0;
    while (blank(p))
        ++p;
    while (p < len) {
        QString item;
        if (value.at(p) == QLatin1Char('"')) {
            ++p;
            while (p < len) {
                if (value.at(p) == QLatin1Char('"')) {
                    if (p + 1 < len && value.at(p + 1) == QLatin1Char('"')) {
                        item += QLatin1Char('"');
                        p += 2;
                        continue;
                    }
                    ++p;
                    break;
                }
                item += value.at(p++);
            }
        } else {
            const int start = p;
            while (p < len && value.at(p).unicode() > 0x20 && value.at(p) != QLatin1Char(','))
                ++p;
            item = value.mid(start, p - start).toString();
        }
        items.append(item);
        while (blank(p))
            ++p;
        if (p < len && value.at(p) == QLatin1Char(',')) {
            if (p + 1 == len)
                items.append(QString());
            do {
                ++p;
            } while (blank(p));
        }
    }
    return items;
}

QString TvxStringList::commaText() const
{
    return toCommaText(m_lines);
}

void TvxStringList::setCommaText(const QString &text)
{
    setLines(fromCommaText(text));
}

QString TvxStringList::text() const
{
    QString result;
    for (const QString &line : m_lines) {
        result += line;
        result += QLatin1Char('\n');
    }
    return result;
}

void TvxStringList::setText(const QString &text)
{
    QString normalized = text;
    normalized.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QStringList lines = normalized.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    setLines(lines);
}

void TvxStringList::beginUpdate()
{
    ++m_updateCount;
}

void TvxStringList::endUpdate()
{
    if (m_updateCount > 0 && --m_updateCount == 0 && m_pendingChange) {
        m_pendingChange = false;
        Q_EMIT changed();
    }
}

QString TvxStringList::keyOf(const QString &line, QChar delim)
{
    return ExtractWord(1, line, delim);
}

void TvxStringList::indexLine(int i) const
{
    const QString key = keyOf(m_lines.at(i), m_indexDelim);
    if (m_exact.contains(key))
        return;
    const QString upper = Vexil::upperKey(key);
    auto it = m_index.find(upper);
    if (it == m_index.end())
        it = m_index.insert(upper, i); // an earlier line of the same key keeps its place
    m_exact.insert(key, it.value());
}

void TvxStringList::rebuildIndex(QChar delim) const
{
    m_index.clear();
    m_exact.clear();
    m_index.reserve(m_lines.size());
    m_exact.reserve(m_lines.size());
    m_indexDelim = delim;
    for (int i = 0; i < m_lines.size(); ++i)
        indexLine(i);
    m_indexValid = true;
}

int TvxStringList::indexOfKey(const QString &key, QChar delim) const
{
    if (!m_indexValid || m_indexDelim != delim)
        rebuildIndex(delim);
    // Keys are mostly asked for as they are written; only other spellings
    // need upper-casing.
    const auto exact = m_exact.constFind(key);
    if (exact != m_exact.cend())
        return exact.value();
    return m_index.value(Vexil::upperKey(key), -1);
}

QString TvxStringList::field(int i, int n, QChar delim) const
{
    if (m_fieldNumber != n || m_fieldDelim != delim) {
        m_fields = QList<QString>(m_lines.size());
        m_fieldKnown = QList<bool>(m_lines.size(), false);
        m_fieldNumber = n;
        m_fieldDelim = delim;
    }
    if (!m_fieldKnown.at(i)) {
        m_fields[i] = ExtractWord(n, m_lines.at(i), delim);
        m_fieldKnown[i] = true;
    }
    return m_fields.at(i);
}
