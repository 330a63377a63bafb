#include "vxproject.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QXmlStreamReader>

int TvxTranslationState::lines(const QString &category) const
{
    const int index = categories.indexOf(category);
    return index < 0 ? 0 : lineCounts.value(index);
}

namespace VexilProject {

QStringList translationClasses()
{
    return {QStringLiteral("TVexil"), QStringLiteral("TVexilRTSE"), QStringLiteral("TVexilRT"),
            QStringLiteral("TVexilLinked"), QStringLiteral("TVexilTLV")};
}

QStringList tableProperties()
{
    return {QStringLiteral("Captions"),      QStringLiteral("Hints"),
            QStringLiteral("DisplayLabels"), QStringLiteral("Strings"),
            QStringLiteral("Fonts"),         QStringLiteral("MultiLines"),
            QStringLiteral("DlgsCaptions"),  QStringLiteral("OtherStrings"),
            QStringLiteral("Locales"),       QStringLiteral("CharSets"),
            QStringLiteral("Collections"),   QStringLiteral("ListView_TreeView_Items")};
}

TvxTranslationState countTables(const QStringList &categories, const QList<QStringList> &tables, int numLanguages,
                                QChar delimiter)
{
    TvxTranslationState state;
    state.numLanguages = qMax(0, numLanguages);
    state.untranslated = QList<int>(state.numLanguages, 0);
    for (int c = 0; c < categories.size() && c < tables.size(); ++c) {
        const QStringList &table = tables.at(c);
        if (table.isEmpty())
            continue;
        state.categories << categories.at(c);
        state.lineCounts << int(table.size());
        for (const QString &line : table) {
            // Walk the line once: field 0 is the key, field k language k.
            int field = 0;
            int start = 0;
            QList<bool> filled(state.numLanguages, false);
            for (int i = 0; i <= line.size(); ++i) {
                if (i < line.size() && line.at(i) != delimiter)
                    continue;
                if (field >= 1 && field <= state.numLanguages && i > start)
                    filled[field - 1] = true;
                ++field;
                start = i + 1;
                if (field > state.numLanguages)
                    break;
            }
            for (int k = 0; k < state.numLanguages; ++k) {
                if (!filled.at(k))
                    ++state.untranslated[k];
            }
        }
    }
    return state;
}

namespace {

struct ComponentXml
{
    QString className;
    QString name;
    int numLanguages = 1;
    QChar delimiter = QLatin1Char('\t');
    QHash<QString, QStringList> tables;
};

// Reads one <property> of the component: the reader stands on its start.
void readComponentProperty(QXmlStreamReader &xml, ComponentXml &component)
{
    const QString name = xml.attributes().value(QLatin1String("name")).toString();
    const bool table = tableProperties().contains(name);
    QStringList lines;
    int depth = 1;
    while (depth > 0 && !xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++depth;
            const auto element = xml.name();
            if (table && element == QLatin1String("string")) {
                lines << xml.readElementText();
                --depth;
            } else if (name == QLatin1String("NumOfLanguages") && element == QLatin1String("number")) {
                bool ok = false;
                const int value = xml.readElementText().trimmed().toInt(&ok);
                if (ok && value > 0)
                    component.numLanguages = value;
                --depth;
            } else if (name == QLatin1String("LangDelim") && element == QLatin1String("unicode")) {
                bool ok = false;
                const uint code = xml.readElementText().trimmed().toUInt(&ok);
                if (ok && code > 0 && code < 0x10000)
                    component.delimiter = QChar(char16_t(code));
                --depth;
            }
        } else if (xml.isEndElement()) {
            --depth;
        }
    }
    if (table)
        component.tables.insert(name, lines);
}

} // namespace

TvxProjectForm readForm(const QString &uiPath)
{
    TvxProjectForm form;
    form.uiPath = uiPath;
    QFile file(uiPath);
    if (!file.open(QIODevice::ReadOnly)) {
        form.error = file.errorString();
        return form;
    }
    QXmlStreamReader xml(&file);
    ComponentXml component;
    int widgetDepth = 0;      // nesting of <widget> elements
    int componentDepth = -1;  // the component's widget depth while inside it
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const auto element = xml.name();
            if (element == QLatin1String("class") && widgetDepth == 0 && form.className.isEmpty()) {
                form.className = xml.readElementText().trimmed();
            } else if (element == QLatin1String("widget")) {
                ++widgetDepth;
                const QString cls = xml.attributes().value(QLatin1String("class")).toString();
                const QString name = xml.attributes().value(QLatin1String("name")).toString();
                if (widgetDepth == 1 && form.formName.isEmpty())
                    form.formName = name;
                else if (component.className.isEmpty() && translationClasses().contains(cls)) {
                    component.className = cls;
                    component.name = name;
                    componentDepth = widgetDepth;
                }
            } else if (element == QLatin1String("property") && componentDepth == widgetDepth && componentDepth > 0) {
                readComponentProperty(xml, component);
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("widget")) {
            if (componentDepth == widgetDepth)
                componentDepth = -2; // read: later widgets are not the component
            --widgetDepth;
        }
    }
    if (xml.hasError()) {
        form.error = QStringLiteral("%1 (line %2)").arg(xml.errorString()).arg(xml.lineNumber());
        return form;
    }
    if (form.formName.isEmpty())
        form.formName = QFileInfo(uiPath).completeBaseName();
    if (!component.className.isEmpty()) {
        const QStringList names = tableProperties();
        QList<QStringList> tables;
        for (const QString &name : names)
            tables << component.tables.value(name);
        form.state = countTables(names, tables, component.numLanguages, component.delimiter);
        form.state.componentClass = component.className;
        form.state.componentName = component.name;
    }
    return form;
}

} // namespace VexilProject

void TvxProject::setFolder(const QString &folder)
{
    m_folder = folder.isEmpty() ? QString() : QDir::cleanPath(QDir(folder).absolutePath());
    refresh();
}

int TvxProject::indexOf(const QString &formName) const
{
    for (int i = 0; i < m_forms.size(); ++i) {
        if (m_forms.at(i).formName == formName)
            return i;
    }
    return -1;
}

void TvxProject::refresh()
{
    m_forms.clear();
    m_units.clear();
    m_projectFile.clear();
    if (m_folder.isEmpty())
        return;
    const QDir dir(m_folder);
    const QFileInfoList files =
        dir.entryInfoList({QStringLiteral("*.ui"), QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                          QDir::Files | QDir::Readable, QDir::Name | QDir::IgnoreCase);
    QHash<QString, QString> cppByBase;
    QHash<QString, QString> hByBase;
    QStringList uiFiles;
    for (const QFileInfo &info : files) {
        const QString suffix = info.suffix().toLower();
        if (suffix == QLatin1String("ui")) {
            uiFiles << info.absoluteFilePath();
            continue;
        }
        m_units << info.absoluteFilePath();
        (suffix == QLatin1String("cpp") ? cppByBase : hByBase).insert(info.completeBaseName(), info.absoluteFilePath());
    }
    // The project file: the first unit (in name order) that defines main(.
    static const QRegularExpression mainDefinition(QStringLiteral("\\bint\\s+main\\s*\\("));
    for (const QString &unit : std::as_const(m_units)) {
        if (!unit.endsWith(QLatin1String(".cpp"), Qt::CaseInsensitive))
            continue;
        QFile file(unit);
        if (file.open(QIODevice::ReadOnly) && QString::fromUtf8(file.readAll()).contains(mainDefinition)) {
            m_projectFile = unit;
            break;
        }
    }
    for (const QString &ui : std::as_const(uiFiles)) {
        TvxProjectForm form = VexilProject::readForm(ui);
        const QString base = QFileInfo(ui).completeBaseName();
        form.cppPath = cppByBase.value(base);
        form.hPath = hByBase.value(base);
        m_forms << form;
    }
}
