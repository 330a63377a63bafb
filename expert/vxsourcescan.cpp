#include "vxsourcescan.h"

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QStringView>

#include <algorithm>

namespace Vexil::Expert {

namespace {

bool isIdentChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\f')
        || c == QLatin1Char('\v');
}

// Where a literal whose opening quote is at @p quote starts: an encoding
// prefix (L, u, U, u8) directly before the quote belongs to it, and an R
// makes it a raw string. A prefix must not be the tail of a longer word.
qsizetype literalStart(const QString &s, qsizetype quote, bool *raw)
{
    auto prefixStart = [&s](qsizetype k) -> qsizetype {
        qsizetype start = k;
        if (k >= 2 && s.at(k - 2) == QLatin1Char('u') && s.at(k - 1) == QLatin1Char('8'))
            start = k - 2;
        else if (k >= 1
                 && (s.at(k - 1) == QLatin1Char('L') || s.at(k - 1) == QLatin1Char('u')
                     || s.at(k - 1) == QLatin1Char('U')))
            start = k - 1;
        if (start > 0 && isIdentChar(s.at(start - 1)))
            return -1;
        return start;
    };
    *raw = false;
    if (quote >= 1 && s.at(quote - 1) == QLatin1Char('R')) {
        const qsizetype start = prefixStart(quote - 1);
        if (start >= 0) {
            *raw = true;
            return start;
        }
    }
    const qsizetype start = prefixStart(quote);
    return start >= 0 ? start : quote;
}

// The end (one past the closing quote) of the raw string whose opening quote
// is at @p quote, or -1 when it is not a well-formed raw string opening.
qsizetype rawStringEnd(const QString &s, qsizetype quote)
{
    const qsizetype paren = s.indexOf(QLatin1Char('('), quote + 1);
    if (paren < 0 || paren - quote - 1 > 16)
        return -1;
    const QStringView delim = QStringView(s).mid(quote + 1, paren - quote - 1);
    for (QChar c : delim) {
        if (c.isSpace() || c == QLatin1Char(')') || c == QLatin1Char('\\'))
            return -1;
    }
    const QString closing = QLatin1Char(')') + delim.toString() + QLatin1Char('"');
    const qsizetype end = s.indexOf(closing, paren + 1);
    return end < 0 ? s.size() : end + closing.size();
}

// The closing quote of the ordinary literal opened at @p quote on its line,
// or -1 when the line ends first.
qsizetype closingQuote(const QString &s, qsizetype quote)
{
    const qsizetype n = s.size();
    qsizetype j = quote + 1;
    while (j < n) {
        const QChar c = s.at(j);
        if (c == QLatin1Char('"'))
            return j;
        if (c == QLatin1Char('\n'))
            return -1;
        if (c == QLatin1Char('\\') && j + 1 < n && s.at(j + 1) != QLatin1Char('\n'))
            j += 2;
        else
            ++j;
    }
    return -1;
}

// A quote inside a character literal: '"' or '\"'.
bool inCharLiteral(const QString &s, qsizetype q)
{
    const qsizetype n = s.size();
    if (q + 1 >= n || s.at(q + 1) != QLatin1Char('\''))
        return false;
    if (q >= 1 && s.at(q - 1) == QLatin1Char('\''))
        return true;
    return q >= 2 && s.at(q - 1) == QLatin1Char('\\') && s.at(q - 2) == QLatin1Char('\'');
}

// Does a string literal (with or without encoding prefix) start at @p k?
bool literalStartsAt(const QString &s, qsizetype k)
{
    const qsizetype n = s.size();
    if (k >= n)
        return false;
    if (s.at(k) == QLatin1Char('"'))
        return true;
    qsizetype q = k;
    if (s.at(q) == QLatin1Char('u') && q + 1 < n && s.at(q + 1) == QLatin1Char('8'))
        q += 2;
    else if (s.at(q) == QLatin1Char('L') || s.at(q) == QLatin1Char('u') || s.at(q) == QLatin1Char('U'))
        q += 1;
    else
        return false;
    return q < n && s.at(q) == QLatin1Char('"');
}

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString getTextCall(const QString &prefix, const QString &id)
{
    return prefix + QLatin1String("->GetText(") + quoted(id);
}

// A definition heading in column 1 that names @p qualified ("Form1::Form1(",
// "Form1::"), possibly after a return type: "void Form1::UpdateStrings()".
bool isDefinitionHeading(const QString &line, const QString &qualified)
{
    if (line.isEmpty() || line.at(0).isSpace())
        return false;
    const qsizetype idx = line.indexOf(qualified, 0, Qt::CaseInsensitive);
    if (idx < 0)
        return false;
    if (idx == 0)
        return true;
    const QChar last = line.at(idx - 1);
    if (last != QLatin1Char(' ') && last != QLatin1Char('*') && last != QLatin1Char('&'))
        return false;
    for (qsizetype k = 0; k < idx; ++k) {
        const QChar c = line.at(k);
        if (!isIdentChar(c) && !QStringLiteral(" \t*&:<>,").contains(c))
            return false;
    }
    return true;
}

int findHeading(const QStringList &lines, const QString &qualified, int from = 0)
{
    for (int i = from; i < lines.size(); ++i) {
        if (isDefinitionHeading(lines.at(i), qualified))
            return i;
    }
    return -1;
}

// One more "UpdateStrings();" before the closing brace of the method whose
// heading names @p qualified. The method reaches to the next definition of
// the class (or the last line); the brace is the last column-1 "}" in it.
// An earlier call is not looked for: each run adds one.
void insertUpdateCall(QStringList &lines, const QString &className, const QString &qualified)
{
    const int heading = findHeading(lines, qualified);
    if (heading < 0)
        return;
    int end = findHeading(lines, className + QLatin1String("::"), heading + 1);
    if (end < 0)
        end = int(lines.size()) - 1;
    for (int k = end; k > heading; --k) {
        if (lines.at(k).startsWith(QLatin1Char('}'))) {
            lines.insert(k, QStringLiteral("    UpdateStrings();"));
            return;
        }
    }
}

QStringList splitLines(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    return lines;
}

// The constant's name: the identifier directly before the "=", after
// dropping "*", "&", "[...]" and trailing const qualifiers.
QString constantName(const QString &declaration)
{
    QString left = declaration.left(declaration.indexOf(QLatin1Char('=')));
    for (;;) {
        left = left.trimmed();
        if (left.endsWith(QLatin1Char(']'))) {
            const qsizetype open = left.lastIndexOf(QLatin1Char('['));
            if (open < 0)
                return {};
            left.truncate(open);
            continue;
        }
        if (left.endsWith(QLatin1Char('*')) || left.endsWith(QLatin1Char('&'))) {
            left.chop(1);
            continue;
        }
        qsizetype k = left.size();
        while (k > 0 && isIdentChar(left.at(k - 1)))
            --k;
        const QString word = left.mid(k);
        if ((word == QLatin1String("const") || word == QLatin1String("constexpr")
             || word == QLatin1String("volatile"))
            && k > 0) {
            left.truncate(k);
            continue;
        }
        if (word.isEmpty() || word.at(0).isDigit())
            return {};
        return word;
    }
}

} // namespace

QString callPrefix(const QString &formName, const QString &componentName, bool formsOwnUnit)
{
    if (formsOwnUnit)
        return QLatin1String("ui->") + componentName;
    return QLatin1String("VEXIL_FORM(") + formName + QLatin1Char(')');
}

QString decodeLiteral(const QString &written)
{
    QString text;
    text.reserve(written.size());
    const qsizetype n = written.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = written.at(i);
        if (c != QLatin1Char('\\') || i + 1 >= n) {
            text += c;
            continue;
        }
        const QChar e = written.at(i + 1);
        switch (e.unicode()) {
        case '"':
        case '\\':
            text += e;
            break;
        case 'n':
            text += QLatin1Char('\n');
            break;
        case 'r':
            text += QLatin1Char('\r');
            break;
        case 't':
            text += QLatin1Char('\t');
            break;
        default:
            text += c;
            text += e;
            break;
        }
        ++i;
    }
    return text;
}

QString excerpt(const QString &written)
{
    QString e = written.left(15);
    if (written.size() > 15) {
        // A cut escape would leave a backslash before the closing quote.
        qsizetype slashes = 0;
        while (slashes < e.size() && e.at(e.size() - 1 - slashes) == QLatin1Char('\\'))
            ++slashes;
        if (slashes % 2)
            e.chop(1);
        e += QLatin1String("...");
    }
    e.replace(QLatin1String("*/"), QLatin1String("* /"));
    return e;
}

TvxScanResult scanStatements(const QString &s, const QString &prefix, int counter)
{
    TvxScanResult result;
    const qsizetype n = s.size();
    if (n == 0)
        return result; // nothing to read: the scan ends without a message

    // Code starts after the first line that begins with "{" in column 1.
    qsizetype start = n;
    for (qsizetype line = 0; line < n;) {
        const qsizetype lf = s.indexOf(QLatin1Char('\n'), line);
        if (s.at(line) == QLatin1Char('{')) {
            start = lf < 0 ? n : lf + 1;
            break;
        }
        if (lf < 0)
            break;
        line = lf + 1;
    }

    qsizetype lineStart = start;
    qsizetype lineEnd = -1; // end of the line holding lineStart, computed when needed
    auto currentLine = [&](qsizetype at) {
        if (at >= lineStart && lineEnd >= 0 && at <= lineEnd)
            return;
        lineStart = s.lastIndexOf(QLatin1Char('\n'), at) + 1;
        if (lineStart < start)
            lineStart = start;
        lineEnd = s.indexOf(QLatin1Char('\n'), at);
        if (lineEnd < 0)
            lineEnd = n;
    };

    QString cachedLine;
    qsizetype cachedLineStart = -1;
    QHash<QString, int> firstOfText;
    qsizetype i = start;
    while (i < n) {
        if (s.at(i) != QLatin1Char('"') || inCharLiteral(s, i)) {
            ++i;
            continue;
        }
        bool raw = false;
        const qsizetype litStart = literalStart(s, i, &raw);
        if (raw) {
            const qsizetype end = rawStringEnd(s, i);
            i = end < 0 ? i + 1 : end;
            continue;
        }
        const qsizetype close = closingQuote(s, i);
        if (close < 0) { // no closing quote on this line
            ++i;
            continue;
        }
        if (close == i + 1) { // empty literal
            i = close + 1;
            continue;
        }
        currentLine(i);
        // Already a look-up: GetText(" right before the literal.
        if (litStart - 8 >= lineStart
            && QStringView(s).mid(litStart - 8, 8).compare(QLatin1String("GetText("), Qt::CaseInsensitive) == 0) {
            i = close + 1;
            continue;
        }

        const QString written = s.mid(i + 1, close - i - 1);
        TvxFoundString row;
        row.position = litStart;
        row.length = close + 1 - litStart;
        row.id = QLatin1String("IDS_") + QString::number(counter);
        row.text = decodeLiteral(written);
        // Rows of one line share one copy of it: a long line with many
        // literals costs its length once, not once per literal.
        if (cachedLineStart != lineStart) {
            cachedLineStart = lineStart;
            cachedLine = s.mid(lineStart, lineEnd - lineStart);
            if (cachedLine.endsWith(QLatin1Char('\r')))
                cachedLine.chop(1);
        }
        row.sourceLine = cachedLine;

        // Adjacent literals join: the call is followed by " + ".
        qsizetype k = close + 1;
        while (k < n && (isBlank(s.at(k)) || s.at(k) == QLatin1Char('\n')))
            ++k;
        const QString suffix = literalStartsAt(s, k) ? QStringLiteral(" + ") : QString();
        row.replacement = getTextCall(prefix, row.id) + QLatin1String(" /* ") + quoted(excerpt(written))
            + QLatin1String(" */ )") + suffix;

        // Equal texts share the first one's identifier and call; the counter
        // value of a later one stays unused.
        const auto first = firstOfText.constFind(row.text);
        if (first != firstOfText.constEnd()) {
            row.id = result.rows.at(first.value()).id;
            row.replacement = result.rows.at(first.value()).replacement;
        } else {
            firstOfText.insert(row.text, int(result.rows.size()));
        }
        result.rows.append(row);
        ++counter;
        i = close + 1;
    }
    if (result.rows.isEmpty())
        result.message = Msg::noStrings();
    return result;
}

QString rewriteStatements(const QString &source, const QList<TvxFoundString> &rows)
{
    QString out;
    out.reserve(source.size() + rows.size() * 48);
    qsizetype pos = 0;
    for (const TvxFoundString &row : rows) {
        // The writer only moves forward: a row that does not lie ahead is left out.
        if (row.position < pos || row.position + row.length > source.size())
            continue;
        out += QStringView(source).mid(pos, row.position - pos);
        out += row.replacement;
        pos = row.position + row.length;
    }
    out += QStringView(source).mid(pos);
    return out;
}

TvxStringEntries stringEntries(const QList<TvxFoundString> &rows)
{
    QStringList keys;
    keys.reserve(rows.size());
    for (const TvxFoundString &row : rows)
        keys.append(row.id + QChar(1) + (row.value.isNull() ? row.text : row.value));
    auto less = [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; };
    std::stable_sort(keys.begin(), keys.end(), less);
    TvxStringEntries entries;
    for (qsizetype k = 0; k < keys.size(); ++k) {
        if (k > 0 && keys.at(k).compare(keys.at(k - 1), Qt::CaseInsensitive) == 0)
            continue;
        const qsizetype cut = keys.at(k).indexOf(QChar(1));
        entries.append({keys.at(k).left(cut), keys.at(k).mid(cut + 1)});
    }
    return entries;
}

QString escapeDelimiter(const QString &text, QChar delimiter)
{
    if (!text.contains(delimiter))
        return text;
    QString escape;
    switch (delimiter.unicode()) {
    case '\t': escape = QStringLiteral("\\t"); break;
    case '\n': escape = QStringLiteral("\\n"); break;
    case '\r': escape = QStringLiteral("\\r"); break;
    default:
        escape = QStringLiteral("\\x%1").arg(delimiter.unicode(), 2, 16, QLatin1Char('0'));
    }
    QString out = text;
    out.replace(delimiter, escape);
    return out;
}

QStringList addToStrings(QStringList table, const TvxStringEntries &entries, QChar delimiter)
{
    // Every line's identifier once, so each entry is placed in constant time.
    QHash<QString, qsizetype> index;
    index.reserve(table.size() + entries.size());
    for (qsizetype i = 0; i < table.size(); ++i) {
        const qsizetype cut = table.at(i).indexOf(delimiter);
        index.insert(cut < 0 ? table.at(i) : table.at(i).left(cut), i);
    }
    QList<bool> removed(table.size(), false);
    QStringList added;
    for (const auto &entry : entries) {
        const auto at = index.constFind(entry.first);
        if (at != index.constEnd() && *at >= 0 && *at < removed.size() && !removed.at(*at))
            removed[*at] = true;
        index.insert(entry.first, -1);
        added << entry.first + delimiter + escapeDelimiter(entry.second, delimiter) + delimiter;
    }
    QStringList result;
    result.reserve(table.size() + added.size());
    for (qsizetype i = 0; i < table.size(); ++i) {
        if (!removed.at(i))
            result << table.at(i);
    }
    // An identifier added twice keeps its last line, as a second AddString would.
    QSet<QString> seen;
    QStringList tail;
    for (qsizetype i = added.size() - 1; i >= 0; --i) {
        const QString id = added.at(i).left(added.at(i).indexOf(delimiter));
        if (!seen.contains(id)) {
            seen.insert(id);
            tail.prepend(added.at(i));
        }
    }
    return result + tail;
}

QString evaluateConstValue(const QString &e)
{
    static const QLatin1String wrappers[] = {QLatin1String("QStringLiteral("), QLatin1String("QLatin1String("),
                                             QLatin1String("QString("), QLatin1String("tr("),
                                             QLatin1String("QT_TR_NOOP(")};
    QString value;
    const qsizetype n = e.size();
    qsizetype i = 0;
    int depth = 0;
    while (i < n) {
        const QChar c = e.at(i);
        if (c.isSpace() || c == QLatin1Char('+')) {
            ++i;
            continue;
        }
        if (c == QLatin1Char(')') && depth > 0) {
            --depth;
            ++i;
            continue;
        }
        bool wrapped = false;
        if (i == 0 || !isIdentChar(e.at(i - 1))) {
            for (const QLatin1String &w : wrappers) {
                if (QStringView(e).mid(i).startsWith(w)) {
                    i += w.size();
                    ++depth;
                    wrapped = true;
                    break;
                }
            }
        }
        if (wrapped)
            continue;
        if (!literalStartsAt(e, i))
            break;
        const qsizetype quote = e.indexOf(QLatin1Char('"'), i);
        const qsizetype close = closingQuote(e, quote);
        if (close < 0)
            break;
        value += decodeLiteral(e.mid(quote + 1, close - quote - 1));
        i = close + 1;
    }
    return value;
}

TvxScanResult scanConstSection(const QString &source, const QString &prefix, QStringList *mergedLines)
{
    TvxScanResult result;
    const QStringList lines = splitLines(source);
    const int boundary = int(lines.indexOf(QStringLiteral("{")));
    QStringList merged;
    merged.reserve(lines.size());
    int j = 0;
    const int scanEnd = boundary < 0 ? 0 : boundary;
    while (j < lines.size()) {
        const QString &line = lines.at(j);
        if (j >= scanEnd || !line.contains(QLatin1Char('"')) || !line.contains(QLatin1Char('='))) {
            merged.append(line);
            ++j;
            continue;
        }
        QString declaration = line.trimmed();
        const QString name = constantName(declaration);
        if (name.isEmpty()) {
            merged.append(line);
            ++j;
            continue;
        }
        // A declaration goes on until a line ends with ";".
        int next = j + 1;
        int joined = 0;
        while (!declaration.endsWith(QLatin1Char(';')) && next < scanEnd) {
            declaration += QLatin1Char(' ') + lines.at(next).trimmed();
            ++next;
            ++joined;
        }
        merged.append(joined ? declaration : line);
        const int index = int(merged.size()) - 1;
        j = next;

        const QString value = evaluateConstValue(declaration.mid(declaration.indexOf(QLatin1Char('=')) + 1));
        if (value.isEmpty())
            continue;
        TvxFoundString row;
        row.name = name;
        row.id = QLatin1String("str") + name.toUpper();
        row.text = name;
        row.value = value;
        row.line = index;
        row.merged = joined;
        row.replacement = getTextCall(prefix, row.id) + QLatin1String(");");
        row.sourceLine = merged.at(index);
        result.rows.append(row);
    }
    if (mergedLines)
        *mergedLines = merged;
    if (result.rows.isEmpty())
        result.message = Msg::noConstStrings();
    return result;
}

QString lineEndOf(const QString &text)
{
    const qsizetype lf = text.indexOf(QLatin1Char('\n'));
    return lf > 0 && text.at(lf - 1) == QLatin1Char('\r') ? QStringLiteral("\r\n") : QStringLiteral("\n");
}

QString languageSlotName(const QString &componentName)
{
    return QLatin1String("on_") + componentName + QLatin1String("_languageChanged");
}

QString rewriteConstSection(QStringList lines, const QList<TvxFoundString> &rows, const QString &className,
                            const QString &componentName, const QString &prefix, const QString &lineEnd)
{
    for (const TvxFoundString &row : rows) {
        if (row.line >= 0 && row.line < lines.size())
            lines[row.line] = QLatin1String("static QString ") + row.name + QLatin1Char(';');
    }
    const QString scope = className + QLatin1String("::");
    insertUpdateCall(lines, className, scope + className + QLatin1Char('('));
    insertUpdateCall(lines, className, scope + languageSlotName(componentName) + QLatin1Char('('));

    const int heading = findHeading(lines, scope + QLatin1String("UpdateStrings("));
    if (heading >= 0) {
        // Each assignment goes two lines below the heading, so the last row
        // ends up first.
        QStringList block;
        block.reserve(rows.size());
        for (auto it = rows.crbegin(); it != rows.crend(); ++it)
            block.append(QLatin1String("    ") + it->name + QLatin1String(" = ") + getTextCall(prefix, it->id)
                         + QLatin1String(");"));
        const int at = std::min(heading + 2, int(lines.size()));
        QStringList out = lines.mid(0, at);
        out += block;
        out += lines.mid(at);
        lines = out;
    }
    return lines.join(lineEnd);
}

QString ensureDeclaration(const QString &header, const QString &className, const QString &method,
                          const QString &section)
{
    QStringList lines = splitLines(header);
    int classLine = -1;
    for (int i = 0; i < lines.size(); ++i) {
        const QString t = lines.at(i).trimmed();
        if (!t.startsWith(QLatin1String("class ")) || t.endsWith(QLatin1Char(';')))
            continue;
        const QStringList words = t.mid(6).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &w : words) {
            QString word = w;
            if (word.endsWith(QLatin1Char(':')) || word.endsWith(QLatin1Char('{')))
                word.chop(1);
            if (word == className) {
                classLine = i;
                break;
            }
            if (w.endsWith(QLatin1Char(':')) || w == QLatin1String(":") || w.endsWith(QLatin1Char('{')))
                break;
        }
        if (classLine >= 0)
            break;
    }
    if (classLine < 0)
        return header;

    // The class body ends where its braces balance.
    int depth = 0;
    bool opened = false;
    int endLine = -1;
    for (int i = classLine; i < lines.size() && endLine < 0; ++i) {
        for (QChar c : lines.at(i)) {
            if (c == QLatin1Char('{')) {
                ++depth;
                opened = true;
            } else if (c == QLatin1Char('}')) {
                if (--depth == 0 && opened) {
                    endLine = i;
                    break;
                }
            }
        }
    }
    if (endLine < 0)
        return header;
    const QString call = method + QLatin1Char('(');
    int sectionLine = -1;
    for (int i = classLine + 1; i < endLine; ++i) {
        const QString t = lines.at(i).trimmed();
        const qsizetype at = t.indexOf(call);
        if (at >= 0 && (at == 0 || !isIdentChar(t.at(at - 1))))
            return header;
        if (sectionLine < 0 && t == section)
            sectionLine = i;
    }
    const QString declaration = QLatin1String("    void ") + method + QLatin1String("();");
    if (sectionLine >= 0) {
        lines.insert(sectionLine + 1, declaration);
    } else {
        lines.insert(endLine, declaration);
        lines.insert(endLine, section);
    }
    return lines.join(lineEndOf(header));
}

QString ensureDefinition(const QString &source, const QString &className, const QString &method)
{
    const QStringList lines = splitLines(source);
    if (findHeading(lines, className + QLatin1String("::") + method + QLatin1Char('(')) >= 0)
        return source;
    const QString nl = lineEndOf(source);
    QString out = source;
    if (!out.isEmpty() && !out.endsWith(QLatin1Char('\n')))
        out += nl;
    out += nl + QLatin1String("void ") + className + QLatin1String("::") + method + QLatin1String("()") + nl
        + QLatin1Char('{') + nl + QLatin1Char('}') + nl;
    return out;
}

QStringList unusedIdentifiers(const QString &source, const QStringList &stringsTable, QChar delimiter)
{
    // Every GetText("ID") of the source, gathered once.
    QSet<QString> used;
    const QLatin1String open("GetText(\"");
    for (qsizetype at = source.indexOf(open); at >= 0; at = source.indexOf(open, at + 1)) {
        const qsizetype idStart = at + open.size();
        const qsizetype close = source.indexOf(QLatin1Char('"'), idStart);
        if (close < 0)
            break;
        if (close + 1 < source.size() && source.at(close + 1) == QLatin1Char(')')) {
            const QStringView id = QStringView(source).mid(idStart, close - idStart);
            if (!id.contains(QLatin1Char('\n')))
                used.insert(id.toString());
        }
    }
    QStringList unused;
    for (const QString &line : stringsTable) {
        const qsizetype cut = line.indexOf(delimiter);
        const QString id = cut < 0 ? line : line.left(cut);
        bool isUsed = used.contains(id);
        if (!isUsed && (id.contains(QLatin1Char('"')) || id.contains(QLatin1Char('\n')))) {
            // An identifier the quick gathering cannot hold: look for it as is.
            const QString pattern = QLatin1String("GetText(\"") + id + QLatin1String("\")");
            isUsed = !id.contains(QLatin1Char('\n')) && source.contains(pattern);
        }
        if (!isUsed)
            unused.append(id);
    }
    return unused;
}

// --- review list -----------------------------------------------------------

void TvxFoundList::toggleMark(int r)
{
    if (r < 1 || r > rowCount())
        return;
    if (!m_marks.removeOne(r))
        m_marks.append(r);
}

void TvxFoundList::invertMarks()
{
    QList<int> inverted;
    const QSet<int> marked(m_marks.cbegin(), m_marks.cend());
    for (int r = 1; r <= rowCount(); ++r) {
        if (!marked.contains(r))
            inverted.append(r);
    }
    m_marks = inverted;
}

bool TvxFoundList::shiftClick(int r, QString *error)
{
    if (r < 1 || r > rowCount() || m_marks.isEmpty())
        return true;
    const int anchor = m_marks.first();
    const int count = int(m_marks.size());
    for (int i = 0; i < count; ++i) {
        if (i >= m_marks.size()) {
            if (error)
                *error = QStringLiteral("List index out of bounds (%1)").arg(i);
            return false;
        }
        toggleMark(m_marks.at(i));
    }
    const int step = r >= anchor ? 1 : -1;
    for (int row = anchor;; row += step) {
        if (!m_marks.contains(row))
            m_marks.append(row);
        if (row == r)
            break;
    }
    return true;
}

void TvxFoundList::deleteRow(int r)
{
    if (r < 1 || r > rowCount())
        return;
    m_rows.removeAt(r - 1);
    m_marks.removeIf([this](int m) { return m > rowCount(); });
}

void TvxFoundList::deleteMarked()
{
    while (!m_marks.isEmpty()) {
        const int r = m_marks.takeFirst();
        if (r >= 1 && r <= rowCount())
            m_rows.removeAt(r - 1);
        for (int &m : m_marks)
            --m;
        m_marks.removeIf([](int m) { return m < 1; });
    }
}

QString TvxFoundList::startIdSuggestion() const
{
    return m_rows.isEmpty() ? QString() : m_rows.first().id.mid(4);
}

bool TvxFoundList::applyStartId(const QString &answer, QString *error)
{
    bool ok = false;
    int n = answer.toInt(&ok);
    if (!ok) {
        if (error)
            *error = Msg::startIdNotInteger();
        return false;
    }
    // Rows that shared an identifier keep sharing one (and its call).
    QHash<QString, int> renamed; // old identifier -> row that got the new one
    for (int i = 0; i < m_rows.size(); ++i) {
        TvxFoundString &row = m_rows[i];
        const auto done = renamed.constFind(row.id);
        if (done != renamed.constEnd()) {
            row.id = m_rows.at(done.value()).id;
            row.replacement = m_rows.at(done.value()).replacement;
            continue;
        }
        const QString old = row.id;
        const QString id = QLatin1String("IDS_") + QString::number(n);
        row.replacement.replace(quoted(old), quoted(id));
        row.id = id;
        renamed.insert(old, i);
        ++n;
    }
    return true;
}

void TvxFoundList::setId(int r, const QString &id)
{
    if (r < 1 || r > rowCount())
        return;
    TvxFoundString &row = m_rows[r - 1];
    row.id = id;
    QString &rep = row.replacement;
    const qsizetype first = rep.indexOf(QLatin1Char('"'));
    const qsizetype second = first < 0 ? -1 : rep.indexOf(QLatin1Char('"'), first + 1);
    if (second >= 0)
        rep = rep.left(first + 1) + id + QLatin1Char('"') + rep.mid(second + 1);
    m_changed = true;
}

void TvxFoundList::setText(int r, const QString &text)
{
    if (r < 1 || r > rowCount())
        return;
    m_rows[r - 1].text = text;
    m_changed = true;
}

void TvxFoundList::setReplacement(int r, const QString &replacement)
{
    if (r < 1 || r > rowCount())
        return;
    m_rows[r - 1].replacement = replacement;
    m_changed = true;
}

void TvxFoundList::castToCharPointer(int current)
{
    const QList<int> targets = m_marks.isEmpty() ? QList<int>{current} : m_marks;
    for (int r : targets) {
        if (r < 1 || r > rowCount())
            continue;
        QString &rep = m_rows[r - 1].replacement;
        // A joining " + " stays outside: the cast takes the call only, and
        // the sum with the next call is left as it was.
        static const QLatin1String join(" + ");
        const bool joined = rep.endsWith(join);
        const QString call = joined ? rep.left(rep.size() - join.size()) : rep;
        rep = QLatin1String("qPrintable(") + call + QLatin1Char(')') + (joined ? QString(join) : QString());
    }
}

} // namespace Vexil::Expert
