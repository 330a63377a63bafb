#include "vxnottranslate.h"

#include "vxcomp.h"
#include "vxcomponents.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

namespace {

QToolButton *moveButton(const char *name, const char *text, const char *toolTip, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setText(QLatin1String(text));
    button->setToolTip(QLatin1String(toolTip));
    button->setMinimumWidth(32);
    return button;
}

QListWidget *nameList(const char *name, QWidget *parent)
{
    auto *list = new QListWidget(parent);
    list->setObjectName(QLatin1String(name));
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return list;
}

} // namespace

TfrmNotTranslate::TfrmNotTranslate(TvxCustomLang *component, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmNotTranslate"));
    setWindowTitle(QStringLiteral("Exclude components"));

    auto *intro = new QLabel(QStringLiteral("Select components that shouldn't be translated."), this);
    lbComps = nameList("lbComps", this);
    lbSelected = nameList("lbSelected", this);
    auto *compsLabel = new QLabel(QStringLiteral("C&omponents:"), this);
    compsLabel->setBuddy(lbComps);
    auto *selectedLabel = new QLabel(QStringLiteral("&Selected components:"), this);
    selectedLabel->setBuddy(lbSelected);

    sbAdd = moveButton("sbAdd", ">", "Move the selected components to the right", this);
    sbAddAll = moveButton("sbAddAll", ">>", "Move all components to the right", this);
    sbRemove = moveButton("sbRemove", "<", "Move the selected components back", this);
    sbRemoveAll = moveButton("sbRemoveAll", "<<", "Move all components back", this);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(QStringLiteral("&OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("btOK"));
    ok->setDefault(true);
    QPushButton *cancel = buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("btCancel"));

    auto *moves = new QVBoxLayout;
    moves->addStretch();
    for (QToolButton *button : {sbAdd, sbAddAll, sbRemove, sbRemoveAll})
        moves->addWidget(button);
    moves->addStretch();

    auto *grid = new QGridLayout(this);
    grid->addWidget(intro, 0, 0, 1, 3);
    grid->addWidget(compsLabel, 1, 0);
    grid->addWidget(selectedLabel, 1, 2);
    grid->addWidget(lbComps, 2, 0);
    grid->addLayout(moves, 2, 1);
    grid->addWidget(lbSelected, 2, 2);
    grid->addWidget(buttons, 3, 0, 1, 3);
    resize(420, 320);

    connect(sbAdd, &QToolButton::clicked, this, [this] { MoveSelection(lbComps, lbSelected); updateButtons(); });
    connect(sbRemove, &QToolButton::clicked, this, [this] { MoveSelection(lbSelected, lbComps); updateButtons(); });
    connect(sbAddAll, &QToolButton::clicked, this, [this] { MoveAll(lbComps, lbSelected); updateButtons(); });
    connect(sbRemoveAll, &QToolButton::clicked, this, [this] { MoveAll(lbSelected, lbComps); updateButtons(); });
    // A double click moves the clicked item (it is selected by then) across.
    connect(lbComps, &QListWidget::itemDoubleClicked, this,
            [this] { MoveSelection(lbComps, lbSelected); updateButtons(); });
    connect(lbSelected, &QListWidget::itemDoubleClicked, this,
            [this] { MoveSelection(lbSelected, lbComps); updateButtons(); });
    connect(lbComps, &QListWidget::itemSelectionChanged, this, &TfrmNotTranslate::updateButtons);
    connect(lbSelected, &QListWidget::itemSelectionChanged, this, &TfrmNotTranslate::updateButtons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    if (component) {
        const QStringList excluded = component->DoNotTranslate()->lines();
        lbSelected->addItems(excluded);
        // Names are compared upper-cased, as the engine compares them.
        QSet<QString> taken;
        for (const QString &name : excluded)
            taken.insert(name.toUpper());
        if (QObject *owner = component->owner()) {
            const TvxComponentList components(owner);
            for (QObject *object : components.components()) {
                const QString name = object->objectName().toUpper();
                if (name.isEmpty() || taken.contains(name))
                    continue;
                taken.insert(name);
                lbComps->addItem(name);
            }
        }
    }
    updateButtons();
}

QStringList TfrmNotTranslate::selectedNames() const
{
    QStringList names;
    names.reserve(lbSelected->count());
    for (int i = 0; i < lbSelected->count(); ++i)
        names << lbSelected->item(i)->text();
    return names;
}

void TfrmNotTranslate::MoveSelection(QListWidget *from, QListWidget *to)
{
    // Taken from the bottom up so the rows still to take keep their numbers,
    // then appended in their list order.
    QList<QListWidgetItem *> moved;
    for (int row = from->count() - 1; row >= 0; --row) {
        if (from->item(row)->isSelected())
            moved.prepend(from->takeItem(row));
    }
    to->clearSelection();
    for (QListWidgetItem *item : moved) {
        to->addItem(item);
        item->setSelected(true);
    }
}

void TfrmNotTranslate::MoveAll(QListWidget *from, QListWidget *to)
{
    to->clearSelection();
    while (from->count() > 0)
        to->addItem(from->takeItem(0));
}

void TfrmNotTranslate::updateButtons()
{
    sbAdd->setEnabled(!lbComps->selectedItems().isEmpty());
    sbAddAll->setEnabled(lbComps->count() > 0);
    sbRemove->setEnabled(!lbSelected->selectedItems().isEmpty());
    sbRemoveAll->setEnabled(lbSelected->count() > 0);
}

bool TfrmNotTranslate::Execute(TvxCustomLang *component, QStringList *names, QWidget *parent)
{
    TfrmNotTranslate dialog(component, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (names)
        *names = dialog.selectedNames();
    return true;
}
