#include "vxstringlist.h"

#include "vxtypes.h"

TvxStringList::TvxStringList(QObject *parent)
    : QObject(parent)
{
}

namespace {

// The key of a line as ExtractWord() gives field 1: after a leading
// delimiter, up to the next one.
QStringView keySpan(const QString &line, QChar delim)
{
    const char16_t d = delim.unicode();
    const char16_t *const begin = reinterpret_cast<const char16_t *>(line.constData());
    const char16_t *const end = begin + line.size();
    const char16_t *start = begin != end && *begin == d ? begin + 1 : begin;
    const char16_t *p = start;
    while (p < end && *p != d) // a plain loop: a view's indexOf() takes the general substring search
        ++p;
    return QStringView(start, p - start);
}

quint32 hashUnits(QStringView s, bool foldAscii)
{
    quint64 h = 0xcbf29ce484222325ull;
    for (QChar c : s) {
        char16_t u = c.unicode();
        if (foldAscii) {
            if (u >= 0x80) // beyond ASCII, upper-casing may change the length
                return hashUnits(QStringView(s.toString().toUpper()), false);
            if (u >= 'a' && u <= 'z')
                u -= 'a' - 'A';
        }
        h = (h ^ u) * 0x100000001b3ull;
    }
    // Mix the high bits down: the index takes the low ones.
    h ^= h >> 33;
    h *= 0xff51afd7ed558ccdull;
    h ^= h >> 33;
    return quint32(h);
}

// The hash of the upper-cased key, without upper-casing ASCII keys.
quint32 keyHash(QStringView key) { return hashUnits(key, true); }

// Whether two keys are equal once upper-cased. Upper-casing maps ASCII one
// to one, so ASCII keys compare character by character; anything else
// compares the upper-cased strings.
bool sameKey(QStringView a, QStringView b)
{
    const qsizetype n = qMin(a.size(), b.size());
    for (qsizetype k = 0; k < n; ++k) {
        char16_t ca = a[k].unicode(), cb = b[k].unicode();
        if (ca >= 0x80 || cb >= 0x80)
            return a.toString().toUpper() == b.toString().toUpper();
        if (ca >= 'a' && ca <= 'z')
            ca -= 'a' - 'A';
        if (cb >= 'a' && cb <= 'z')
            cb -= 'a' - 'A';
        if (ca != cb)
            return false;
    }
    // Equal so far: a longer key upper-cases to something longer.
    return a.size() == b.size();
}

} // namespace

void TvxStringList::touched()
{
    ++m_version;
    if (m_updateCount > 0)
        m_pendingChange = true;
    else
        Q_EMIT changed();
}

void TvxStringList::invalidateIndex()
{
    m_indexValid = false;
    std::vector<Slot>().swap(m_slots);
    m_used = m_freed = 0;
}

void TvxStringList::setLines(const QStringList &lines)
{
    m_lines = lines;
    m_holes = 0;
    std::vector<bool>().swap(m_hole);
    std::vector<qint32>().swap(m_tree);
    invalidateIndex();
    touched();
}

void TvxStringList::assign(const TvxStringList &other)
{
    if (&other == this)
        return;
    setLines(other.lines());
}

int TvxStringList::append(const QString &line)
{
    m_lines.append(line);
    const int pos = int(m_lines.size()) - 1;
    if (m_holes) {
        // Extend the tree by one place holding one line.
        const int j = pos + 1;
        auto prefix = [this](int k) {
            qint32 sum = 0;
            for (; k > 0; k -= k & -k)
                sum += m_tree[size_t(k)];
            return sum;
        };
        m_tree.push_back(1 + prefix(j - 1) - prefix(j - (j & -j)));
        m_hole.push_back(false);
    }
    if (m_indexValid)
        indexLine(pos);
    touched();
    return count() - 1;
}

void TvxStringList::insert(int i, const QString &line)
{
    if (i == count()) {
        append(line);
        return;
    }
    closeHoles();
    m_lines.insert(i, line);
    if (m_indexValid) {
        for (Slot &slot : m_slots) {
            if (slot.pos >= i)
                ++slot.pos;
        }
        indexLine(i);
    }
    touched();
}

void TvxStringList::replace(int i, const QString &line)
{
    const int pos = m_holes ? physical(i) : i;
    // The index points into the line's text, so a new text is indexed anew.
    const bool rekey = m_indexValid;
    if (rekey)
        unindexLine(pos);
    m_lines[pos] = line;
    if (rekey)
        indexLine(pos);
    touched();
}

void TvxStringList::removeAt(int i)
{
    const int pos = m_holes ? physical(i) : i;
    if (m_indexValid)
        unindexLine(pos);
    if (pos == m_lines.size() - 1) {
        m_lines.removeLast();
        if (m_holes) { // a tree without its last place still counts the others
            m_hole.pop_back();
            m_tree.pop_back();
        }
    } else {
        openHole(pos);
    }
    if (m_holes > count())
        closeHoles();
    // Freed slots lengthen every search that passes them: once they are a
    // quarter of the table, index afresh (which also shrinks the table).
    if (m_indexValid && m_freed * 4 > int(m_slots.size()))
        rebuildIndex(m_indexDelim);
    touched();
}

void TvxStringList::clear()
{
    if (isEmpty()) {
        closeHoles();
        return;
    }
    setLines(QStringList());
}

// --- holes -----------------------------------------------------------------

void TvxStringList::openHole(int pos)
{
    const int m = int(m_lines.size());
    if (!m_holes) {
        // Every place holds a line: node j counts the lowest set bit of j.
        m_tree.assign(size_t(m) + 1, 0);
        for (int j = 1; j <= m; ++j)
            m_tree[size_t(j)] = j & -j;
        m_hole.assign(size_t(m), false);
    }
    m_hole[size_t(pos)] = true;
    ++m_holes;
    for (int j = pos + 1; j <= m; j += j & -j)
        --m_tree[size_t(j)];
    m_lines[pos] = QString();
}

int TvxStringList::physical(int i) const
{
    // The place of the (i + 1)-th line: descend the tree.
    const int m = int(m_tree.size()) - 1;
    int step = 1;
    while (step * 2 <= m)
        step *= 2;
    int pos = 0;
    qint32 rest = i + 1;
    for (; step > 0; step >>= 1) {
        if (pos + step <= m && m_tree[size_t(pos + step)] < rest) {
            pos += step;
            rest -= m_tree[size_t(pos)];
        }
    }
    return pos;
}

int TvxStringList::logical(int pos) const
{
    if (!m_holes)
        return pos;
    qint32 before = 0;
    for (int k = pos; k > 0; k -= k & -k)
        before += m_tree[size_t(k)];
    return before;
}

void TvxStringList::closeHoles() const
{
    if (!m_holes)
        return;
    const int m = int(m_lines.size());
    std::vector<qint32> moved(m_indexValid ? size_t(m) : 0);
    int w = 0;
    for (int pos = 0; pos < m; ++pos) {
        if (m_hole[size_t(pos)])
            continue;
        if (w != pos)
            m_lines[w] = std::move(m_lines[pos]);
        if (m_indexValid)
            moved[size_t(pos)] = w;
        ++w;
    }
    m_lines.resize(w);
    if (m_indexValid) {
        for (Slot &slot : m_slots) {
            if (slot.pos >= 0)
                slot.pos = moved[size_t(slot.pos)];
        }
    }
    m_holes = 0;
    std::vector<bool>().swap(m_hole);
    std::vector<qint32>().swap(m_tree);
}

int TvxStringList::indexOf(const QString &s) const
{
    closeHoles();
    for (int i = 0; i < m_lines.size(); ++i) {
        if (m_lines.at(i).compare(s, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

int TvxStringList::indexOfName(const QString &name) const
{
    closeHoles();
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
    return toCommaText(lines());
}

void TvxStringList::setCommaText(const QString &text)
{
    setLines(fromCommaText(text));
}

QString TvxStringList::text() const
{
    QString result;
    for (const QString &line : lines()) {
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

// --- key index ---------------------------------------------------------------

void TvxStringList::indexLine(int pos) const
{
    // Keep at most three quarters of the slots taken (freed ones count, as
    // they lengthen searches); a rebuild indexes this line too.
    if ((m_used + m_freed + 1) * 4 > int(m_slots.size()) * 3) {
        rebuildIndex(m_indexDelim);
        return;
    }
    const QString &line = m_lines.at(pos);
    const QStringView key = keySpan(line, m_indexDelim);
    const quint32 h = keyHash(key);
    const size_t mask = m_slots.size() - 1;
    for (size_t k = h & mask;; k = (k + 1) & mask) {
        Slot &slot = m_slots[k];
        if (slot.pos < 0) {
            if (slot.pos == FreedSlot)
                --m_freed;
            slot = Slot{h, pos, line.constData(), qint32(line.size()), qint32(key.size()),
                        key.data() != line.constData()};
            ++m_used;
            return;
        }
    }
}

void TvxStringList::unindexLine(int pos) const
{
    const quint32 h = keyHash(keySpan(m_lines.at(pos), m_indexDelim));
    const size_t mask = m_slots.size() - 1;
    for (size_t k = h & mask; m_slots[k].pos != EmptySlot; k = (k + 1) & mask) {
        if (m_slots[k].pos == pos) {
            m_slots[k].pos = FreedSlot;
            --m_used;
            ++m_freed;
            return;
        }
    }
}

void TvxStringList::rebuildIndex(QChar delim) const
{
    // Half as many slots again as lines: the table stays small enough to
    // be read from the cache, searches stay short, and a twelfth of it can
    // be added (or removed and added) before the next rebuild at three
    // quarters, so rebuilds still cost a constant per line.
    size_t size = 16;
    while (size < size_t(count()) * 3 / 2)
        size *= 2;
    std::vector<Slot>(size, Slot{0, EmptySlot, nullptr, 0, 0, 0}).swap(m_slots);
    m_used = m_freed = 0;
    m_indexDelim = delim;
    m_indexValid = true;
    for (int pos = 0; pos < m_lines.size(); ++pos) {
        if (!isHole(pos))
            indexLine(pos);
    }
}

template<typename Match>
int TvxStringList::firstIndexed(QStringView key, Match match) const
{
    const Slot *found = nullptr;
    // Every line is in the index, so the first of equal keys is the lowest
    // place among the matches of one probe sequence.
    const quint32 h = keyHash(key);
    const size_t mask = m_slots.size() - 1;
    int best = -1;
    for (size_t k = h & mask; m_slots[k].pos != EmptySlot; k = (k + 1) & mask) {
        const Slot &slot = m_slots[k];
        if (slot.pos >= 0 && slot.hash == h && (best < 0 || slot.pos < best) && match(slot)) {
            best = slot.pos;
            found = &slot;
        }
    }
    if (found) {
        m_foundIndex = logical(best);
        m_foundVersion = m_version;
        m_foundLine = QStringView(found->line, found->lineSize);
        return m_foundIndex;
    }
    return -1;
}

int TvxStringList::indexOfKey(const QString &key, QChar delim) const
{
    if (!m_indexValid || m_indexDelim != delim)
        rebuildIndex(delim);
    return firstIndexed(key, [&](const Slot &slot) { return sameKey(slot.key(), key); });
}

int TvxStringList::indexOfExactKey(const QString &key, QChar delim) const
{
    if (key.isEmpty() || key.contains(delim)) {
        // Such a line's key is not the text before its first delimiter.
        const QString prefix = key + delim;
        for (int i = 0; i < count(); ++i) {
            if (at(i).startsWith(prefix))
                return i;
        }
        return -1;
    }
    // A line that begins with the key and the delimiter has exactly that key.
    if (!m_indexValid || m_indexDelim != delim)
        rebuildIndex(delim);
    return firstIndexed(key, [&](const Slot &slot) { return slot.startsLine() && slot.key() == key; });
}

QString TvxStringList::field(int i, int n, QChar delim) const
{
    // ExtractWord() on the line, reading it where the last search found it.
    const QStringView line = i == m_foundIndex && m_foundVersion == m_version ? m_foundLine : QStringView(at(i));
    return ExtractWordView(n, line, delim).toString();
}
