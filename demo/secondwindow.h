#pragma once

#include "ui_secondwindow.h"

/// A second window whose translation component follows the main window's
/// language through a shared dispatcher.
class SecondWindow : public QWidget
{
    Q_OBJECT
public:
    explicit SecondWindow(QWidget *parent = nullptr);
    TVexil *vexil() const { return ui.vexil; }

private:
    Ui::SecondWindow ui;
};
