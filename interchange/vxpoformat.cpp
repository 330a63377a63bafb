#include "vxpoformat.h"

#include <QtCore/QDateTime>
#include <QtCore/QStringDecoder>

#include <cctype>

namespace Vexil::Interchange::Po {

namespace {

QString escapePart(const QString &part)
{
    QString out = part;
    out.replace(QLatin1Char('~'), QLatin1String("~~"));
    out.replace(QLatin1Char('|'), QLatin1String("~|"));
    return out;
}

// One C string body: quotes, backslashes and control characters escaped.
void appendQuoted(QString &out, QStringView text)
{
    out += QLatin1Char('"');
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"': out += QLatin1String("\\\""); break;
        case '\\': out += QLatin1String("\\\\"); break;
        case '\n': out += QLatin1String("\\n"); break;
        case '\r': out += QLatin1String("\\r"); break;
        case '\t': out += QLatin1String("\\t"); break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\%1").arg(c.unicode(), 3, 8, QLatin1Char('0'));
            else
                out += c;
        }
    }
    out += QLatin1Char('"');
}

// keyword "text", or for a text of several lines keyword "" and one
// quoted line per line of the text, as gettext's tools write them.
void appendField(QString &out, const char *keyword, const QString &text)
{
    out += QLatin1String(keyword);
    out += QLatin1Char(' ');
    const qsizetype nl = text.indexOf(QLatin1Char('\n'));
    if (nl < 0 || nl == text.size() - 1) {
        appendQuoted(out, text);
        out += QLatin1Char('\n');
        return;
    }
    out += QLatin1String("\"\"\n");
    qsizetype from = 0;
    while (from < text.size()) {
        qsizetype end = text.indexOf(QLatin1Char('\n'), from);
        end = end < 0 ? text.size() : end + 1;
        appendQuoted(out, QStringView(text).mid(from, end - from));
        out += QLatin1Char('\n');
        from = end;
    }
}

} // namespace

QString joinContext(const QString &context, const QString &comment)
{
    if (comment.isEmpty())
        return escapePart(context);
    return escapePart(context) + QLatin1Char('|') + escapePart(comment);
}

void splitContext(const QString &msgctxt, QString *context, QString *comment)
{
    QString part;
    bool split = false;
    context->clear();
    comment->clear();
    for (qsizetype i = 0; i < msgctxt.size(); ++i) {
        const QChar c = msgctxt.at(i);
        if (c == QLatin1Char('~') && i + 1 < msgctxt.size()) {
            part += msgctxt.at(++i);
        } else if (c == QLatin1Char('|') && !split) {
            *context = part;
            part.clear();
            split = true;
        } else {
            part += c;
        }
    }
    if (split)
        *comment = part;
    else
        *context = part;
}

QByteArray toBytes(const TvxMessageFile &file)
{
    QString out;
    out.reserve(file.messages.size() * 120 + 512);
    out += QLatin1String("msgid \"\"\nmsgstr \"\"\n"
                         "\"Project-Id-Version: Vexil translations\\n\"\n"
                         "\"MIME-Version: 1.0\\n\"\n"
                         "\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
                         "\"Content-Transfer-Encoding: 8bit\\n\"\n");
    // The fields gettext's checks want: the time of the export, and the
    // translator and team left for the translator's tool to fill in.
    out += QLatin1String("\"PO-Revision-Date: ")
        + QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-dd HH:mm")) + QLatin1String("+0000\\n\"\n");
    out += QLatin1String("\"Last-Translator: \\n\"\n\"Language-Team: \\n\"\n");
    // Header values come from files read before: quoted like any text.
    const auto header = [&out](const char *name, const QString &value) {
        appendQuoted(out, QLatin1String(name) + value + QLatin1Char('\n'));
        out += QLatin1Char('\n');
    };
    if (!file.language.isEmpty()) {
        header("Language: ", file.language);
        header("X-Language: ", file.language);
    }
    if (!file.sourceLanguage.isEmpty())
        header("X-Source-Language: ", file.sourceLanguage);
    out += QLatin1String("\"X-Qt-Contexts: true\\n\"\n");
    for (const TvxMessage &m : file.messages) {
        out += QLatin1Char('\n');
        if (!m.finished && !m.translation.isEmpty())
            out += QLatin1String("#, fuzzy\n");
        appendField(out, "msgctxt", joinContext(m.context, m.comment));
        appendField(out, "msgid", m.source);
        appendField(out, "msgstr", m.translation);
    }
    return out.toUtf8();
}

bool write(const TvxMessageFile &file, const QString &fileName, QString *error)
{
    return writeMessageFile(toBytes(file), fileName, error);
}

namespace {

// The body of a quoted string, escapes decoded; false when @p line is not
// one quoted string.
bool unquote(QStringView line, QString *out)
{
    line = line.trimmed();
    if (line.size() < 2 || line.front() != QLatin1Char('"') || line.back() != QLatin1Char('"'))
        return false;
    for (qsizetype i = 1; i + 1 < line.size(); ++i) {
        QChar c = line.at(i);
        if (c == QLatin1Char('"'))
            return false; // an unescaped quote inside
        if (c != QLatin1Char('\\')) {
            out->append(c);
            continue;
        }
        if (i + 2 >= line.size())
            return false; // a backslash escaping the closing quote
        c = line.at(++i);
        switch (c.unicode()) {
        case 'n': out->append(QLatin1Char('\n')); break;
        case 'r': out->append(QLatin1Char('\r')); break;
        case 't': out->append(QLatin1Char('\t')); break;
        case 'a': out->append(QChar(7)); break;
        case 'b': out->append(QChar(8)); break;
        case 'f': out->append(QChar(12)); break;
        case 'v': out->append(QChar(11)); break;
        case 'x': {
            uint v = 0;
            int n = 0;
            while (i + 1 < line.size() - 1 && n < 2 && std::isxdigit(uchar(line.at(i + 1).toLatin1()))) {
                v = v * 16 + QString(line.at(++i)).toUInt(nullptr, 16);
                ++n;
            }
            out->append(QChar(char16_t(v)));
            break;
        }
        default:
            if (c >= QLatin1Char('0') && c <= QLatin1Char('7')) {
                uint v = c.unicode() - '0';
                for (int n = 0; n < 2 && i + 1 < line.size() - 1 && line.at(i + 1) >= QLatin1Char('0')
                                && line.at(i + 1) <= QLatin1Char('7');
                     ++n)
                    v = v * 8 + (line.at(++i).unicode() - '0');
                out->append(QChar(char16_t(v)));
            } else {
                out->append(c); // \" \\ and anything else stand for themselves
            }
        }
    }
    return true;
}

QString headerField(const QString &header, QLatin1String name)
{
    const auto lines = QStringView(header).split(QLatin1Char('\n'));
    for (QStringView l : lines) {
        if (l.startsWith(name, Qt::CaseInsensitive) && l.size() > name.size() && l.at(name.size()) == QLatin1Char(':'))
            return l.mid(name.size() + 1).trimmed().toString();
    }
    return QString();
}

} // namespace

bool fromBytes(const QByteArray &bytes, TvxMessageFile *file, QString *error)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    if (utf8.hasError()) {
        if (error)
            *error = QStringLiteral("the file is not UTF-8 text");
        return false;
    }
    TvxMessageFile result;
    enum Field { NoField, Ctxt, Id, IdPlural, Str, StrOther } field = NoField;
    QString ctxt, id, str;
    bool hasCtxt = false, hasId = false, fuzzy = false, obsolete = false, any = false;
    int entryLine = 0;
    bool header = false;

    auto finish = [&]() {
        if (hasId) {
            if (!hasCtxt && id.isEmpty() && !header) {
                header = true;
                QString lang = headerField(str, QLatin1String("Language"));
                if (lang.isEmpty())
                    lang = headerField(str, QLatin1String("X-Language"));
                result.language = lang;
                result.sourceLanguage = headerField(str, QLatin1String("X-Source-Language"));
            } else if (!obsolete) {
                TvxMessage m;
                if (hasCtxt)
                    splitContext(ctxt, &m.context, &m.comment);
                m.source = id;
                m.translation = str;
                m.finished = !fuzzy;
                m.line = entryLine;
                result.messages.append(std::move(m));
            }
        }
        ctxt.clear();
        id.clear();
        str.clear();
        hasCtxt = hasId = fuzzy = obsolete = any = false;
        field = NoField;
    };

    const auto lines = QStringView(text).split(QLatin1Char('\n'));
    int lineNo = 0;
    bool lineObsolete = false;
    auto startNew = [&]() {
        finish();
        obsolete = lineObsolete;
    };
    for (QStringView raw : lines) {
        ++lineNo;
        QStringView line = raw.trimmed();
        lineObsolete = false;
        if (line.isEmpty()) {
            if (field >= Str)
                finish();
            continue;
        }
        if (line.startsWith(QLatin1String("#~"))) {
            lineObsolete = true;
            if (field >= Str && !obsolete)
                finish();
            obsolete = true;
            line = line.mid(2).trimmed();
            if (line.isEmpty())
                continue;
        } else if (line.startsWith(QLatin1Char('#'))) {
            if (field >= Str)
                finish();
            if (line.startsWith(QLatin1String("#,")) && line.contains(QLatin1String("fuzzy")))
                fuzzy = true;
            if (!any)
                entryLine = lineNo;
            any = true;
            continue;
        }
        auto keyword = [&](QLatin1String word) {
            return line.startsWith(word) && line.size() > word.size()
                && (line.at(word.size()) == QLatin1Char(' ') || line.at(word.size()) == QLatin1Char('\t'));
        };
        QString *target = nullptr;
        QStringView rest;
        if (keyword(QLatin1String("msgctxt"))) {
            if (field >= Str)
                startNew();
            if (!any)
                entryLine = lineNo;
            any = true;
            field = Ctxt;
            hasCtxt = true;
            target = &ctxt;
            rest = line.mid(7);
        } else if (keyword(QLatin1String("msgid_plural"))) {
            field = IdPlural;
            rest = line.mid(12);
        } else if (keyword(QLatin1String("msgid"))) {
            if (field >= Str)
                startNew();
            if (!any)
                entryLine = lineNo;
            any = true;
            field = Id;
            hasId = true;
            target = &id;
            rest = line.mid(5);
        } else if (line.startsWith(QLatin1String("msgstr[0]"))) {
            field = Str;
            target = &str;
            rest = line.mid(9);
        } else if (line.startsWith(QLatin1String("msgstr["))) {
            field = StrOther;
            rest = line.mid(line.indexOf(QLatin1Char(']')) + 1);
        } else if (keyword(QLatin1String("msgstr"))) {
            if (!hasId) {
                if (error)
                    *error = QStringLiteral("line %1: msgstr without msgid").arg(lineNo);
                return false;
            }
            field = Str;
            target = &str;
            rest = line.mid(6);
        } else if (line.startsWith(QLatin1Char('"'))) {
            switch (field) {
            case Ctxt: target = &ctxt; break;
            case Id: target = &id; break;
            case Str: target = &str; break;
            case IdPlural:
            case StrOther: break;
            case NoField:
                if (error)
                    *error = QStringLiteral("line %1: a string outside any msgid, msgstr or msgctxt").arg(lineNo);
                return false;
            }
            rest = line;
        } else {
            if (error)
                *error = QStringLiteral("line %1: unexpected text \"%2\"").arg(lineNo).arg(line.left(40));
            return false;
        }
        QString body;
        if (!unquote(rest, &body)) {
            if (error)
                *error = QStringLiteral("line %1: a string is not closed or badly quoted").arg(lineNo);
            return false;
        }
        if (target)
            target->append(body);
    }
    if (hasId && field < Str) {
        if (error)
            *error = QStringLiteral("line %1: the last message has no msgstr").arg(lineNo);
        return false;
    }
    finish();
    *file = std::move(result);
    return true;
}

bool read(const QString &fileName, TvxMessageFile *file, QString *error)
{
    return readMessageFile(fileName, file, error, fromBytes);
}

} // namespace Vexil::Interchange::Po
