#pragma once

// Project folders for the expert's tests: real .ui files and units.
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStringList>

namespace ExpertForms {

/// A .ui of a plain widget form @p name with a button and, when
/// @p componentClass is not empty, a translation component of that class
/// in @p languages languages holding @p captions (lines as the component
/// keeps them) and @p hints.
inline QString formUi(const QString &name, const QString &componentClass = QString(), int languages = 2,
                      const QStringList &captions = {}, const QStringList &hints = {})
{
    const auto list = [](const QString &property, const QStringList &lines) {
        if (lines.isEmpty())
            return QString();
        QString xml = QStringLiteral("   <property name=\"%1\"><stringlist>").arg(property);
        for (const QString &line : lines)
            xml += QStringLiteral("<string>%1</string>").arg(line.toHtmlEscaped());
        return xml + QStringLiteral("</stringlist></property>\n");
    };
    QString component;
    QString custom;
    if (!componentClass.isEmpty()) {
        component = QStringLiteral("  <widget class=\"%1\" name=\"Vexil1\">\n"
                                   "   <property name=\"geometry\"><rect><x>200</x><y>10</y><width>28</width>"
                                   "<height>28</height></rect></property>\n"
                                   "   <property name=\"NumOfLanguages\"><number>%2</number></property>\n")
                        .arg(componentClass)
                        .arg(languages)
                    + list(QStringLiteral("Captions"), captions) + list(QStringLiteral("Hints"), hints)
                    + QStringLiteral("  </widget>\n");
        const QString header = componentClass == QLatin1String("TVexil") ? QStringLiteral("vxcomp.h")
                                                                          : componentClass.toLower() + QStringLiteral(".h");
        const QString base = componentClass == QLatin1String("TVexil") ? QStringLiteral("QWidget") : QStringLiteral("TVexil");
        custom = QStringLiteral(" <customwidgets>\n  <customwidget><class>%1</class><extends>%2</extends>"
                                "<header>%3</header></customwidget>\n </customwidgets>\n")
                     .arg(componentClass, base, header);
    }
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n <class>%1</class>\n"
                          " <widget class=\"QWidget\" name=\"%1\">\n"
                          "  <property name=\"geometry\"><rect><x>0</x><y>0</y><width>300</width><height>160</height>"
                          "</rect></property>\n"
                          "  <property name=\"windowTitle\"><string>%1 window</string></property>\n"
                          "  <widget class=\"QPushButton\" name=\"pushButton\">\n"
                          "   <property name=\"geometry\"><rect><x>10</x><y>10</y><width>100</width><height>30</height>"
                          "</rect></property>\n"
                          "   <property name=\"text\"><string>Hello</string></property>\n"
                          "  </widget>\n%2 </widget>\n%3 <resources/>\n <connections/>\n</ui>\n")
        .arg(name, component, custom);
}

inline bool writeFile(const QString &path, const QString &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text.toUtf8()) == text.toUtf8().size();
}

inline QString readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace ExpertForms
