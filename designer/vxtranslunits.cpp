#include "vxtranslunits.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

TfrmTranslUnits::TfrmTranslUnits(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmTranslUnits"));
    setWindowTitle(QStringLiteral("Translating Units without Form"));
    cbUnits = new QComboBox(this);
    cbUnits->setObjectName(QStringLiteral("cbUnits"));
    cbForms = new QComboBox(this);
    cbForms->setObjectName(QStringLiteral("cbForms"));
    auto *unitLabel = new QLabel(QStringLiteral("&Select Unit:"), this);
    unitLabel->setBuddy(cbUnits);
    auto *formLabel = new QLabel(QStringLiteral("Select &Form with TVexil:"), this);
    formLabel->setBuddy(cbForms);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(unitLabel);
    layout->addWidget(cbUnits);
    layout->addWidget(formLabel);
    layout->addWidget(cbForms);
    layout->addWidget(buttons);
    resize(360, sizeHint().height());
}

void TfrmTranslUnits::setUnits(const QStringList &names, const QStringList &files)
{
    cbUnits->clear();
    for (int i = 0; i < names.size(); ++i)
        cbUnits->addItem(names.at(i), files.value(i));
}

void TfrmTranslUnits::setForms(const QStringList &forms)
{
    cbForms->clear();
    cbForms->addItems(forms);
}

QString TfrmTranslUnits::selectedUnitFile() const
{
    return cbUnits->currentData().toString();
}

QString TfrmTranslUnits::selectedForm() const
{
    return cbForms->currentText();
}
