#pragma once

#include <QtCore/QObject>
#include <QtGui/QColor>
#include <QtGui/QIcon>

class QWidget;

namespace VexilDesigner {

/// A flag on a pole with @p mark on the cloth, drawn at the usual icon sizes:
/// the widget-box picture of one of the suite's components.
QIcon flagIcon(const QColor &cloth, const QString &mark);

/// Makes a non-visual component visible on a form in the designer: a small
/// box showing its icon, so it can be picked and moved like any widget.
/// Outside the designer the component keeps hiding itself.
void showInDesigner(QWidget *component, const QIcon &icon);

} // namespace VexilDesigner
