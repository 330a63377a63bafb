#pragma once

#include <QtCore/QObject>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace Vexil {

/// The object of class @p T named @p name that a form file links to: the
/// first among @p scope's descendants, else the first of the application's
/// widgets (a shared object on another form), else nullptr.
template <typename T>
T *findNamed(const QObject *scope, const QString &name)
{
    if (name.isEmpty())
        return nullptr;
    if (scope) {
        if (T *found = scope->findChild<T *>(name))
            return found;
    }
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        auto *candidate = qobject_cast<T *>(widget);
        if (candidate && candidate->objectName() == name)
            return candidate;
    }
    return nullptr;
}

} // namespace Vexil
