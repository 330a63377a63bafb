#include "vxuiedit.h"

#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QXmlStreamReader>

#include <algorithm>

namespace Vexil::Expert {

namespace {

// One element of the form file, with where its pieces stand in the text.
struct Element
{
    QString name;
    QXmlStreamAttributes attributes;
    qsizetype start = 0;    // '<' of the start tag
    qsizetype tagEnd = 0;   // after the start tag
    qsizetype closeAt = 0;  // '<' of the end tag (== end for <x/>)
    qsizetype end = 0;      // after the end tag
    int parent = -1;
    QString text;           // character data directly inside
};

// Every element of @p ui in document order, or false when it is not XML.
bool parse(const QString &ui, QList<Element> *elements, QString *error)
{
    QXmlStreamReader xml(ui);
    QList<int> open;
    qsizetype before = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        const qsizetype after = xml.characterOffset();
        if (xml.isStartElement()) {
            Element e;
            e.name = xml.name().toString();
            e.attributes = xml.attributes();
            // The reader stops past the tag; whitespace before it belongs to
            // the previous token's offset, so look back for the '<'.
            e.start = ui.lastIndexOf(QLatin1Char('<'), after - 1);
            e.tagEnd = after;
            e.parent = open.isEmpty() ? -1 : open.last();
            open << int(elements->size());
            elements->append(e);
        } else if (xml.isEndElement()) {
            Element &e = (*elements)[open.takeLast()];
            e.end = after;
            e.closeAt = after == e.tagEnd ? after : ui.lastIndexOf(QLatin1Char('<'), after - 1);
        } else if (xml.isCharacters() && !open.isEmpty()) {
            (*elements)[open.last()].text += xml.text();
        }
        before = after;
    }
    Q_UNUSED(before);
    if (xml.hasError()) {
        if (error)
            *error = QStringLiteral("The form file is not valid XML (line %1): %2")
                         .arg(xml.lineNumber())
                         .arg(xml.errorString());
        return false;
    }
    return true;
}

int findWidget(const QList<Element> &elements, const QString &component)
{
    for (int i = 0; i < elements.size(); ++i) {
        if (elements.at(i).name == QLatin1String("widget")
            && elements.at(i).attributes.value(QLatin1String("name")) == component)
            return i;
    }
    return -1;
}

// The widget named @p component of a .ui about to be edited: its index in
// @p elements, or -1 with @p error set.
int editedWidget(const QString &ui, const QString &component, QList<Element> *elements, QString *error)
{
    if (!parse(ui, elements, error))
        return -1;
    const int w = findWidget(*elements, component);
    if (w < 0 && error)
        *error = QStringLiteral("The form has no component named %1.").arg(component);
    return w;
}

int childNamed(const QList<Element> &elements, int parent, const QString &element, const QString &nameAttr = {})
{
    for (int i = parent + 1; i < elements.size() && elements.at(i).start < elements.at(parent).end; ++i) {
        const Element &e = elements.at(i);
        if (e.parent == parent && e.name == element
            && (nameAttr.isNull() || e.attributes.value(QLatin1String("name")) == nameAttr))
            return i;
    }
    return -1;
}

// The blanks before position @p at on its line.
QString indentAt(const QString &text, qsizetype at)
{
    qsizetype b = at;
    while (b > 0 && (text.at(b - 1) == QLatin1Char(' ') || text.at(b - 1) == QLatin1Char('\t')))
        --b;
    return text.mid(b, at - b);
}

QString escaped(const QString &s)
{
    QString out;
    out.reserve(s.size());
    for (QChar c : s) {
        switch (c.unicode()) {
        case '&': out += QLatin1String("&amp;"); break;
        case '<': out += QLatin1String("&lt;"); break;
        case '>': out += QLatin1String("&gt;"); break;
        // A carriage return would be read back as a line feed.
        case '\r': out += QLatin1String("&#13;"); break;
        default: out += c;
        }
    }
    return out;
}

struct Edit
{
    qsizetype from, to;
    QString text;
};

QString applied(const QString &text, QList<Edit> edits)
{
    std::sort(edits.begin(), edits.end(), [](const Edit &a, const Edit &b) { return a.from > b.from; });
    QString out = text;
    for (const Edit &e : edits)
        out.replace(e.from, e.to - e.from, e.text);
    return out;
}

// The start tag of @p e with attribute @p attr set to @p value.
QString withAttribute(const QString &tag, const QString &attr, const QString &value)
{
    static const QString pattern = QStringLiteral("(\\s%1\\s*=\\s*)(\"[^\"]*\"|'[^']*')");
    QRegularExpression re(pattern.arg(QRegularExpression::escape(attr)));
    QString out = tag;
    const QRegularExpressionMatch m = re.match(out);
    if (m.hasMatch())
        out.replace(m.capturedStart(2), m.capturedLength(2), QLatin1Char('"') + escaped(value) + QLatin1Char('"'));
    return out;
}

} // namespace

const QStringList &componentClassNames()
{
    static const QStringList names{QStringLiteral("TVexil"), QStringLiteral("TVexilRTSE"), QStringLiteral("TVexilRT"),
                                   QStringLiteral("TVexilLinked"), QStringLiteral("TVexilTLV")};
    return names;
}

QString componentHeader(const QString &className)
{
    static const QStringList headers{QStringLiteral("vxcomp.h"), QStringLiteral("vxvexilrtse.h"),
                                     QStringLiteral("vxvexilrt.h"), QStringLiteral("vxvexillinked.h"),
                                     QStringLiteral("vxvexiltlv.h")};
    const qsizetype i = componentClassNames().indexOf(className);
    return i < 0 ? QString() : headers.at(i);
}

QString uiWidgetClass(const QString &ui, const QString &component)
{
    QList<Element> elements;
    if (!parse(ui, &elements, nullptr))
        return {};
    const int w = findWidget(elements, component);
    return w < 0 ? QString() : elements.at(w).attributes.value(QLatin1String("class")).toString();
}

QString uiTranslationComponent(const QString &ui, QString *className)
{
    QList<Element> elements;
    if (!parse(ui, &elements, nullptr))
        return {};
    for (const Element &e : std::as_const(elements)) {
        const QString cls = e.attributes.value(QLatin1String("class")).toString();
        if (e.name == QLatin1String("widget") && componentClassNames().contains(cls)) {
            if (className)
                *className = cls;
            return e.attributes.value(QLatin1String("name")).toString();
        }
    }
    return {};
}

QStringList uiStringList(const QString &ui, const QString &component, const QString &property, bool *found)
{
    if (found)
        *found = false;
    QList<Element> elements;
    if (!parse(ui, &elements, nullptr))
        return {};
    const int w = findWidget(elements, component);
    const int p = w < 0 ? -1 : childNamed(elements, w, QStringLiteral("property"), property);
    const int list = p < 0 ? -1 : childNamed(elements, p, QStringLiteral("stringlist"));
    if (list < 0)
        return {};
    if (found)
        *found = true;
    QStringList items;
    for (int i = list + 1; i < elements.size() && elements.at(i).start < elements.at(list).end; ++i) {
        if (elements.at(i).parent == list && elements.at(i).name == QLatin1String("string"))
            items << elements.at(i).text;
    }
    return items;
}

QChar uiCharProperty(const QString &ui, const QString &component, const QString &property, QChar fallback)
{
    QList<Element> elements;
    if (!parse(ui, &elements, nullptr))
        return fallback;
    const int w = findWidget(elements, component);
    const int p = w < 0 ? -1 : childNamed(elements, w, QStringLiteral("property"), property);
    const int c = p < 0 ? -1 : childNamed(elements, p, QStringLiteral("char"));
    const int u = c < 0 ? -1 : childNamed(elements, c, QStringLiteral("unicode"));
    if (u < 0)
        return fallback;
    bool ok = false;
    const uint code = elements.at(u).text.trimmed().toUInt(&ok);
    return ok && code > 0 && code < 0x10000 ? QChar(char16_t(code)) : fallback;
}

bool setUiStringList(QString *ui, const QString &component, const QString &property, const QStringList &items,
                     QString *error)
{
    QList<Element> elements;
    const int w = editedWidget(*ui, component, &elements, error);
    if (w < 0)
        return false;
    const int p = childNamed(elements, w, QStringLiteral("property"), property);
    const QString indent = p >= 0 ? indentAt(*ui, elements.at(p).start)
                                  : indentAt(*ui, elements.at(w).start) + QLatin1Char(' ');
    QString listTag = QStringLiteral("<stringlist>");
    if (p >= 0) {
        const int list = childNamed(elements, p, QStringLiteral("stringlist"));
        if (list >= 0) {
            listTag = ui->mid(elements.at(list).start, elements.at(list).tagEnd - elements.at(list).start);
            if (listTag.endsWith(QLatin1String("/>")))
                listTag = listTag.chopped(2).trimmed() + QLatin1Char('>');
        }
    }
    QString block = QStringLiteral("<property name=\"%1\">\n").arg(escaped(property));
    block += indent + QLatin1Char(' ') + listTag + QLatin1Char('\n');
    for (const QString &item : items)
        block += indent + QLatin1String("  <string>") + escaped(item) + QLatin1String("</string>\n");
    block += indent + QLatin1String(" </stringlist>\n") + indent + QLatin1String("</property>");
    if (p >= 0)
        *ui = applied(*ui, {{elements.at(p).start, elements.at(p).end, block}});
    else
        *ui = applied(*ui, {{elements.at(w).tagEnd, elements.at(w).tagEnd, QLatin1Char('\n') + indent + block}});
    return true;
}

bool setUiWidgetClass(QString *ui, const QString &component, const QString &newClass, const QString &newHeader,
                      QString *error)
{
    QList<Element> elements;
    const int w = editedWidget(*ui, component, &elements, error);
    if (w < 0)
        return false;
    const QString oldClass = elements.at(w).attributes.value(QLatin1String("class")).toString();
    QList<Edit> edits;
    const Element &widget = elements.at(w);
    edits << Edit{widget.start, widget.tagEnd,
                  withAttribute(ui->mid(widget.start, widget.tagEnd - widget.start), QStringLiteral("class"), newClass)};

    // Does another widget still use the old class?
    bool oldStillUsed = false;
    int oldEntry = -1, newEntry = -1, section = -1;
    for (int i = 0; i < elements.size(); ++i) {
        const Element &e = elements.at(i);
        if (i != w && e.name == QLatin1String("widget") && e.attributes.value(QLatin1String("class")) == oldClass)
            oldStillUsed = true;
        if (e.name == QLatin1String("customwidgets"))
            section = i;
        if (e.name == QLatin1String("customwidget")) {
            const int c = childNamed(elements, i, QStringLiteral("class"));
            const QString cls = c < 0 ? QString() : elements.at(c).text.trimmed();
            if (cls == oldClass)
                oldEntry = i;
            else if (cls == newClass)
                newEntry = i;
        }
    }
    auto replaceText = [&](int entry, const QString &child, const QString &value) {
        const int c = childNamed(elements, entry, child);
        if (c >= 0)
            edits << Edit{elements.at(c).tagEnd, elements.at(c).closeAt, escaped(value)};
    };
    if (newEntry < 0 && oldEntry >= 0 && !oldStillUsed) {
        replaceText(oldEntry, QStringLiteral("class"), newClass);
        replaceText(oldEntry, QStringLiteral("header"), newHeader);
    } else if (newEntry < 0) {
        const QString entry = QStringLiteral("<customwidget>\n%1   <class>%2</class>\n%1   <extends>QWidget</extends>\n"
                                             "%1   <header>%3</header>\n%1  </customwidget>")
                                  .arg(QString(), escaped(newClass), escaped(newHeader));
        if (section >= 0) {
            const qsizetype at = elements.at(section).closeAt;
            edits << Edit{at, at, QLatin1String("  ") + entry + QLatin1String("\n ")};
        } else if (!elements.isEmpty()) {
            const qsizetype at = elements.at(0).closeAt;
            edits << Edit{at, at, QLatin1String(" <customwidgets>\n  ") + entry + QLatin1String("\n </customwidgets>\n")};
        }
    } else if (oldEntry >= 0 && !oldStillUsed) {
        // The new class has its entry already: the old one goes, with its line.
        const qsizetype from = elements.at(oldEntry).start - indentAt(*ui, elements.at(oldEntry).start).size();
        qsizetype to = elements.at(oldEntry).end;
        if (to < ui->size() && ui->at(to) == QLatin1Char('\n'))
            ++to;
        edits << Edit{from, to, QString()};
    }
    *ui = applied(*ui, edits);
    return true;
}

QString changeDeclarationClass(const QString &source, const QString &component, const QString &oldClass,
                               const QString &newClass, const QString &oldHeader, const QString &newHeader,
                               int *changed)
{
    const QRegularExpression decl(QStringLiteral("\\b%1(\\s*[*&]?\\s*)%2\\b")
                                      .arg(QRegularExpression::escape(oldClass), QRegularExpression::escape(component)));
    QString out;
    out.reserve(source.size());
    int count = 0;
    qsizetype from = 0;
    for (auto it = decl.globalMatch(source); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        out += QStringView(source).mid(from, m.capturedStart() - from);
        out += newClass + m.captured(1) + component;
        from = m.capturedEnd();
        ++count;
    }
    out += QStringView(source).mid(from);
    if (changed)
        *changed = count;
    if (count == 0 || newHeader.isEmpty() || oldHeader.isEmpty())
        return out;
    // The new class's header must be reachable where the old one was included.
    const QRegularExpression include(QStringLiteral("^([ \\t]*#[ \\t]*include[ \\t]*[\"<])%1([\">][^\\n]*)$")
                                         .arg(QRegularExpression::escape(oldHeader)),
                                     QRegularExpression::MultilineOption);
    const QRegularExpression hasNew(QStringLiteral("#[ \\t]*include[ \\t]*[\"<]%1[\">]")
                                        .arg(QRegularExpression::escape(newHeader)));
    const QRegularExpressionMatch m = include.match(out);
    if (m.hasMatch() && !hasNew.match(out).hasMatch()) {
        const QString line = m.captured(1) + newHeader + m.captured(2);
        out.insert(m.capturedEnd(), QChar(u'\n') + line);
    }
    return out;
}

} // namespace Vexil::Expert
