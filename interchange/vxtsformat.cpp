#include "vxtsformat.h"

#include <QtCore/QXmlStreamReader>

namespace Vexil::Interchange::Ts {

namespace {

// Text for element content, escaped as XML requires. A carriage return is
// written as a reference (a reader turns a raw one into a line feed);
// other control characters, which XML 1.0 cannot hold at all, go into
// Qt's <byte> elements.
void appendEscaped(QByteArray &out, const QString &text)
{
    QString buffer;
    buffer.reserve(text.size() + 8);
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '&': buffer += QLatin1String("&amp;"); break;
        case '<': buffer += QLatin1String("&lt;"); break;
        case '>': buffer += QLatin1String("&gt;"); break;
        case '"': buffer += QLatin1String("&quot;"); break;
        case '\'': buffer += QLatin1String("&apos;"); break;
        case '\r': buffer += QLatin1String("&#xd;"); break;
        case '\n':
        case '\t': buffer += c; break;
        default:
            if (c.unicode() < 0x20 || c.unicode() == 0xFFFE || c.unicode() == 0xFFFF)
                buffer += QStringLiteral("<byte value=\"x%1\"/>").arg(c.unicode(), 0, 16);
            else
                buffer += c;
        }
    }
    out += buffer.toUtf8();
}

// An attribute value: XML 1.0 has no way at all to hold a control
// character there, so they are left out (a language code has none).
void appendAttribute(QByteArray &out, const char *name, const QString &value)
{
    QString clean;
    clean.reserve(value.size());
    for (const QChar c : value) {
        if (c.unicode() >= 0x20 && c.unicode() != 0xFFFE && c.unicode() != 0xFFFF)
            clean += c;
    }
    out += ' ';
    out += name;
    out += "=\"";
    appendEscaped(out, clean);
    out += '"';
}

void appendElement(QByteArray &out, const char *indent, const char *name, const QString &text,
                   const char *attributes = "")
{
    out += indent;
    out += '<';
    out += name;
    out += attributes;
    if (text.isEmpty()) {
        out += "></";
    } else {
        out += '>';
        appendEscaped(out, text);
        out += "</";
    }
    out += name;
    out += ">\n";
}

} // namespace

QByteArray toBytes(const TvxMessageFile &file)
{
    QByteArray out;
    out.reserve(file.messages.size() * 160 + 256);
    out += "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS version=\"2.1\"";
    if (!file.language.isEmpty())
        appendAttribute(out, "language", file.language);
    if (!file.sourceLanguage.isEmpty())
        appendAttribute(out, "sourcelanguage", file.sourceLanguage);
    out += ">\n";
    QString context;
    bool open = false;
    for (const TvxMessage &m : file.messages) {
        if (!open || m.context != context) {
            if (open)
                out += "</context>\n";
            out += "<context>\n";
            appendElement(out, "    ", "name", m.context);
            context = m.context;
            open = true;
        }
        out += "    <message>\n";
        appendElement(out, "        ", "source", m.source);
        if (!m.comment.isEmpty())
            appendElement(out, "        ", "comment", m.comment);
        const char *type = m.obsolete ? " type=\"vanished\"" : (m.finished ? "" : " type=\"unfinished\"");
        appendElement(out, "        ", "translation", m.translation, type);
        out += "    </message>\n";
    }
    if (open)
        out += "</context>\n";
    out += "</TS>\n";
    return out;
}

bool write(const TvxMessageFile &file, const QString &fileName, QString *error)
{
    return writeMessageFile(toBytes(file), fileName, error);
}

namespace {

// The text of the current element up to its end: character data, <byte>
// elements and, for plural translations, the first <numerusform>.
QString readText(QXmlStreamReader &xml)
{
    QString text;
    // The first plural or length form, once one is met: then the text is
    // that form's alone, without the blanks that lay the forms out.
    QString form;
    bool numerusSeen = false;
    int formDepth = -1; // the first form's depth while inside it
    int depth = 0;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        QString &into = formDepth >= 0 ? form : text;
        if (token == QXmlStreamReader::Characters) {
            into += xml.text();
        } else if (token == QXmlStreamReader::EntityReference) {
            into += xml.text();
        } else if (token == QXmlStreamReader::StartElement) {
            ++depth;
            if (xml.name() == QLatin1String("byte")) {
                QStringView v = xml.attributes().value(QLatin1String("value"));
                bool ok = false;
                uint code = 0;
                if (v.startsWith(QLatin1Char('x')))
                    code = v.mid(1).toUInt(&ok, 16);
                else
                    code = v.toUInt(&ok, 10);
                if (ok)
                    into += QChar(char16_t(code));
            } else if (xml.name() == QLatin1String("numerusform") || xml.name() == QLatin1String("lengthvariant")) {
                if (numerusSeen) {
                    xml.skipCurrentElement();
                    --depth;
                } else {
                    numerusSeen = true;
                    formDepth = depth;
                }
            }
        } else if (token == QXmlStreamReader::EndElement) {
            if (depth == 0)
                break;
            if (depth == formDepth)
                formDepth = -1;
            --depth;
        }
    }
    return numerusSeen ? form : text;
}

} // namespace

bool fromBytes(const QByteArray &bytes, TvxMessageFile *file, QString *error)
{
    QXmlStreamReader xml(bytes);
    TvxMessageFile result;
    bool sawRoot = false;
    QString context;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QStringView name = xml.name();
        if (!sawRoot) {
            if (name != QLatin1String("TS")) {
                xml.raiseError(QStringLiteral("the document is not a Qt translation source (its root is <%1>, not <TS>)")
                                   .arg(name));
                break;
            }
            sawRoot = true;
            result.language = xml.attributes().value(QLatin1String("language")).toString();
            result.sourceLanguage = xml.attributes().value(QLatin1String("sourcelanguage")).toString();
        } else if (name == QLatin1String("context")) {
            context.clear();
        } else if (name == QLatin1String("name")) {
            context = readText(xml);
        } else if (name == QLatin1String("message")) {
            TvxMessage m;
            m.context = context;
            m.line = int(xml.lineNumber());
            while (xml.readNextStartElement()) {
                const QStringView child = xml.name();
                if (child == QLatin1String("source")) {
                    m.source = readText(xml);
                } else if (child == QLatin1String("comment")) {
                    m.comment = readText(xml);
                } else if (child == QLatin1String("translation")) {
                    const QStringView type = xml.attributes().value(QLatin1String("type"));
                    m.finished = type.isEmpty();
                    m.obsolete = type == QLatin1String("obsolete") || type == QLatin1String("vanished");
                    m.translation = readText(xml);
                } else {
                    xml.skipCurrentElement();
                }
            }
            result.messages.append(std::move(m));
        }
    }
    if (!xml.hasError() && !sawRoot)
        xml.raiseError(QStringLiteral("the document is empty"));
    if (xml.hasError()) {
        if (error)
            *error = QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(xml.errorString());
        return false;
    }
    *file = std::move(result);
    return true;
}

bool read(const QString &fileName, TvxMessageFile *file, QString *error)
{
    return readMessageFile(fileName, file, error, fromBytes);
}

} // namespace Vexil::Interchange::Ts
