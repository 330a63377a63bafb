#pragma once

// Text edits of a form's .ui file and of the form's C++ declarations, made
// in place: only the edited element changes, every other character of the
// file (indentation, attributes, comments, order) stays as it was.

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Vexil::Expert {

/// The translation component classes a form's component can be changed to,
/// in menu order.
const QStringList &componentClassNames();
/// The public header declaring @p className (as the Designer plugin names
/// it for uic); empty for a class not in the family.
QString componentHeader(const QString &className);

/// The class of the widget named @p component in @p ui; empty when there is
/// none (or the text is not a form).
QString uiWidgetClass(const QString &ui, const QString &component);

/// The name of the form's translation component (the first widget of a
/// class of componentClassNames()), its class into @p className; empty when
/// the form has none.
QString uiTranslationComponent(const QString &ui, QString *className = nullptr);

/// The items of the string-list property @p property of widget @p component;
/// @p found tells whether the property is there at all.
QStringList uiStringList(const QString &ui, const QString &component, const QString &property,
                         bool *found = nullptr);

/// The character property @p property of widget @p component (Designer
/// writes it as <char><unicode>code</unicode></char>); @p fallback when the
/// form does not set it.
QChar uiCharProperty(const QString &ui, const QString &component, const QString &property, QChar fallback);

/// Sets the string-list property @p property of widget @p component to
/// @p items, in the layout Designer writes. An existing list keeps its
/// <stringlist> attributes (notr, comment ...). False, with @p error set and
/// @p ui unchanged, when the widget is not found or the text is not XML.
bool setUiStringList(QString *ui, const QString &component, const QString &property, const QStringList &items,
                     QString *error = nullptr);

/// Changes the class of widget @p component to @p newClass: its <widget
/// class="..."> and the <customwidget> entry (class and header). False,
/// with @p error set and @p ui unchanged, when the widget is not found.
bool setUiWidgetClass(QString *ui, const QString &component, const QString &newClass, const QString &newHeader,
                      QString *error = nullptr);

/// Changes each declaration that names @p oldClass directly before
/// @p component (`TVexil *Vexil1;`, `TVexil Vexil1`) to @p newClass, and
/// adds an include of @p newHeader after the one of @p oldHeader when a
/// declaration changed. @p changed receives the number of declarations.
QString changeDeclarationClass(const QString &source, const QString &component, const QString &oldClass,
                               const QString &newClass, const QString &oldHeader, const QString &newHeader,
                               int *changed = nullptr);

} // namespace Vexil::Expert
