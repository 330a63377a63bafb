#include "vxfinddialog.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QVBoxLayout>

namespace {

QStringList findKeys()
{
    return {QStringLiteral("Find what:"), QStringLiteral("Match whole words only"), QStringLiteral("Match case"),
            QStringLiteral("Direction"), QStringLiteral("Up"), QStringLiteral("Down"), QStringLiteral("Find Next"),
            QStringLiteral("Help"), QStringLiteral("Cancel")};
}

} // namespace

TvxFindDialog::TvxFindDialog(QWidget *parent)
    : TvxFindDialog(parent, findKeys())
{
    setWindowTitle(QStringLiteral("Find"));
}

TvxFindDialog::TvxFindDialog(QWidget *parent, const QStringList &keys)
    : QDialog(parent)
    , TvxLinkedDialog(this, keys)
{
    build();
}

void TvxFindDialog::build()
{
    auto *outer = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    outer->addLayout(left, 1);

    m_fields = new QWidget(this);
    auto *form = new QFormLayout(m_fields);
    form->setContentsMargins(0, 0, 0, 0);
    m_findEdit = new QLineEdit(m_fields);
    m_findEdit->setObjectName(QStringLiteral("edFind"));
    auto *findLabel = new QLabel(QStringLiteral("Fi&nd what:"), m_fields);
    findLabel->setBuddy(m_findEdit);
    form->addRow(findLabel, m_findEdit);
    left->addWidget(m_fields);

    auto *options = new QHBoxLayout;
    auto *checks = new QVBoxLayout;
    m_wholeWord = new QCheckBox(QStringLiteral("Match &whole words only"), this);
    m_matchCase = new QCheckBox(QStringLiteral("Match &case"), this);
    checks->addWidget(m_wholeWord);
    checks->addWidget(m_matchCase);
    checks->addStretch();
    options->addLayout(checks);
    auto *direction = new QGroupBox(QStringLiteral("Direction"), this);
    auto *dirLayout = new QHBoxLayout(direction);
    m_up = new QRadioButton(QStringLiteral("&Up"), direction);
    m_down = new QRadioButton(QStringLiteral("&Down"), direction);
    m_down->setChecked(true);
    dirLayout->addWidget(m_up);
    dirLayout->addWidget(m_down);
    options->addWidget(direction);
    left->addLayout(options);

    m_buttons = new QWidget(this);
    auto *buttons = new QVBoxLayout(m_buttons);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addStretch();
    outer->addWidget(m_buttons);

    auto *findNext = new QPushButton(QStringLiteral("&Find Next"), this);
    findNext->setObjectName(QStringLiteral("btnFindNext"));
    findNext->setDefault(true);
    connect(findNext, &QPushButton::clicked, this, &TvxFindDialog::find);
    addButton(findNext);
    auto *cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("btnCancel"));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    addButton(cancel);
}

void TvxFindDialog::addButton(QPushButton *button)
{
    auto *layout = static_cast<QVBoxLayout *>(m_buttons->layout());
    layout->insertWidget(layout->count() - 1, button);
}

QString TvxFindDialog::FindText() const
{
    return m_findEdit->text();
}

void TvxFindDialog::SetFindText(const QString &text)
{
    m_findEdit->setText(text);
}

bool TvxFindDialog::MatchCase() const
{
    return m_matchCase->isChecked();
}

bool TvxFindDialog::WholeWord() const
{
    return m_wholeWord->isChecked();
}

bool TvxFindDialog::Down() const
{
    return m_down->isChecked();
}

void TvxFindDialog::Execute()
{
    show();
    raise();
    activateWindow();
}

TvxReplaceDialog::TvxReplaceDialog(QWidget *parent)
    : TvxFindDialog(parent, findKeys() << QStringLiteral("Replace") << QStringLiteral("Replace All")
                                       << QStringLiteral("Replace with:"))
{
    setWindowTitle(QStringLiteral("Replace"));
    m_replaceEdit = new QLineEdit(m_fields);
    m_replaceEdit->setObjectName(QStringLiteral("edReplace"));
    auto *label = new QLabel(QStringLiteral("Re&place with:"), m_fields);
    label->setBuddy(m_replaceEdit);
    static_cast<QFormLayout *>(m_fields->layout())->addRow(label, m_replaceEdit);

    auto *replaceButton = new QPushButton(QStringLiteral("&Replace"), this);
    replaceButton->setObjectName(QStringLiteral("btnReplace"));
    connect(replaceButton, &QPushButton::clicked, this, &TvxReplaceDialog::replace);
    addButton(replaceButton);
    auto *all = new QPushButton(QStringLiteral("Replace &All"), this);
    all->setObjectName(QStringLiteral("btnReplaceAll"));
    connect(all, &QPushButton::clicked, this, &TvxReplaceDialog::replaceAll);
    addButton(all);
}

QString TvxReplaceDialog::ReplaceText() const
{
    return m_replaceEdit->text();
}

void TvxReplaceDialog::SetReplaceText(const QString &text)
{
    m_replaceEdit->setText(text);
}
