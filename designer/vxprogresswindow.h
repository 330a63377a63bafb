#pragma once

#include "vxdesignertools_export.h"

#include <QtWidgets/QFrame>

class QLabel;

/// The small window that tells what a scan is doing ("Scanning...",
/// "Modifying source..."); hidden before any dialog.
class VEXIL_DESIGNER_EXPORT TvxProgressWindow : public QFrame
{
    Q_OBJECT
public:
    explicit TvxProgressWindow(QWidget *parent = nullptr);
    /// Shows @p text, or hides the window when it is empty.
    void showText(const QString &text);
    QString text() const;

private:
    QLabel *m_label;
};
