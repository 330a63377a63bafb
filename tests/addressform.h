#pragma once

#include "ui_addressform.h"

// A form class with its own .ui and translation component, used inside
// other forms as a promoted widget.
class AddressForm : public QWidget
{
    Q_OBJECT
public:
    explicit AddressForm(QWidget *parent = nullptr) : QWidget(parent) { ui.setupUi(this); }
    Ui::AddressForm ui;
};
