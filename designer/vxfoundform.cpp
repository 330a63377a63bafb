#include "vxfoundform.h"

#include "vxformstorage.h"
#include "vxsettings.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Vexil::Expert;

namespace {

const char *const headers[] = {"String ID:", "String constant:", "Will be replaced by:", "Source line:"};
const int extraWidth[] = {10, 20, 50, 100};

// Draws marked rows filled in the highlight colour, and tells the form
// which column an edit starts in.
class FoundDelegate : public QStyledItemDelegate
{
public:
    FoundDelegate(TfrmFound *form) : QStyledItemDelegate(form), m_form(form) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        // Drawing cells clears the note, unless an edit is under way.
        if (!m_editing)
            m_form->clearNote();
        if (!m_form->list()->isMarked(index.row() + 1)) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        painter->save();
        painter->fillRect(option.rect, option.palette.brush(QPalette::Active, QPalette::Highlight));
        painter->setPen(option.palette.color(QPalette::Active, QPalette::HighlightedText));
        painter->setFont(option.font);
        painter->drawText(option.rect.adjusted(2, 2, 0, 0), Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                          index.data().toString());
        painter->restore();
    }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        m_form->setEditNote(index.column());
        m_editing = true;
        return QStyledItemDelegate::createEditor(parent, option, index);
    }

    void destroyEditor(QWidget *editor, const QModelIndex &index) const override
    {
        m_editing = false;
        QStyledItemDelegate::destroyEditor(editor, index);
    }

private:
    TfrmFound *m_form;
    mutable bool m_editing = false;
};

} // namespace

TfrmFound::TfrmFound(TvxFoundList *list, QWidget *parent) : QDialog(parent), m_list(list)
{
    setObjectName(QStringLiteral("frmFound"));
    setWindowTitle(QStringLiteral("Found strings"));
    setSizeGripEnabled(true);

    sgStrings = new QTableWidget(0, 4, this);
    sgStrings->setObjectName(QStringLiteral("sgStrings"));
    sgStrings->setToolTip(QStringLiteral("Right Click for activate popup menu..."));
    sgStrings->verticalHeader()->hide();
    // One text line per row, as a grid of source lines reads best.
    sgStrings->setWordWrap(false);
    sgStrings->verticalHeader()->setDefaultSectionSize(sgStrings->fontMetrics().height() + 6);
    sgStrings->horizontalHeader()->setSectionsMovable(true);
    sgStrings->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    sgStrings->setSelectionMode(QAbstractItemView::SingleSelection);
    sgStrings->setSelectionBehavior(QAbstractItemView::SelectItems);
    sgStrings->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                               | QAbstractItemView::AnyKeyPressed);
    sgStrings->setItemDelegate(new FoundDelegate(this));
    sgStrings->setContextMenuPolicy(Qt::CustomContextMenu);
    sgStrings->viewport()->installEventFilter(this);
    QStringList labels;
    for (const char *h : headers)
        labels << QString::fromLatin1(h);
    sgStrings->setHorizontalHeaderLabels(labels);
    const QFontMetrics fm(sgStrings->horizontalHeader()->font());
    for (int c = 0; c < 4; ++c)
        sgStrings->setColumnWidth(c, fm.horizontalAdvance(labels.at(c)) + extraWidth[c]);

    Panel2 = new QLabel(this);
    Panel2->setObjectName(QStringLiteral("Panel2"));
    Panel2->setFrameShape(QFrame::StyledPanel);

    btOK = new QPushButton(QStringLiteral("&Replace"), this);
    btOK->setObjectName(QStringLiteral("btOK"));
    btOK->setDefault(true);
    btCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    btCancel->setObjectName(QStringLiteral("btCancel"));
    btDelete = new QPushButton(QStringLiteral("&Delete"), this);
    btDelete->setObjectName(QStringLiteral("btDelete"));
    btID = new QPushButton(QStringLiteral("&Start ID..."), this);
    btID->setObjectName(QStringLiteral("btID"));
    // Buttons do not take Enter from the grid's editor: Replace is the default.
    for (QPushButton *b : {btCancel, btDelete, btID})
        b->setAutoDefault(false);

    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("PopupMenu1"));
    auto action = [this](const char *name, const char *text, const QKeySequence &key, void (TfrmFound::*slot)()) {
        auto *a = new QAction(QString::fromLatin1(text), this);
        a->setObjectName(QString::fromLatin1(name));
        a->setShortcut(key);
        a->setShortcutContext(Qt::WindowShortcut);
        connect(a, &QAction::triggered, this, slot);
        m_popup->addAction(a);
        addAction(a);
        return a;
    };
    Delete1 = action("Delete1", "&Delete", QKeySequence(Qt::CTRL | Qt::Key_Delete), &TfrmFound::btDeleteClick);
    StartID1 = action("StartID1", "&Start ID...", QKeySequence(), &TfrmFound::btIDClick);
    m_popup->addSeparator();
    Markfordelete1 = action("Markfordelete1", "&Mark for delete", QKeySequence(Qt::CTRL | Qt::Key_M),
                            &TfrmFound::Markfordelete1Click);
    Invertselection1 = action("Invertselection1", "&Invert selection", QKeySequence(Qt::CTRL | Qt::Key_I),
                              &TfrmFound::Invertselection1Click);
    m_popup->addSeparator();
    TypecasttoPChar1 = action("TypecasttoPChar1", "&Typecast to PChar...", QKeySequence(),
                              &TfrmFound::TypecasttoPChar1Click);

    connect(btOK, &QPushButton::clicked, this, &TfrmFound::btOKClick);
    connect(btCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(btDelete, &QPushButton::clicked, this, &TfrmFound::btDeleteClick);
    connect(btID, &QPushButton::clicked, this, &TfrmFound::btIDClick);
    connect(sgStrings, &QTableWidget::cellChanged, this, &TfrmFound::cellChanged);
    connect(sgStrings, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &pos) { m_popup->popup(sgStrings->viewport()->mapToGlobal(pos)); });

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(btDelete);
    buttons->addWidget(btID);
    buttons->addStretch();
    buttons->addWidget(btOK);
    buttons->addWidget(btCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(sgStrings, 1);
    layout->addWidget(Panel2);
    layout->addLayout(buttons);
    resize(760, 420);

    // Size and place are kept between scans.
    m_storage = new TvxFormStorage(this);
    m_storage->setObjectName(QStringLiteral("vxFormStorage1"));
    m_storage->SetSubKey(Vexil::toolsKeyPath() + QStringLiteral("\\FoundForm"));

    fill();
}

QString TfrmFound::note() const
{
    return Panel2->text();
}

void TfrmFound::setEditNote(int column)
{
    static const char *const notes[] = {"", "Don't modify this column!",
                                        "Everything written here, will be placed in source!",
                                        "Modifying this column has no effects!"};
    const QString text = column >= 1 && column <= 3 ? QString::fromLatin1(notes[column]) : QString();
    Panel2->setText(text.isEmpty() ? QString() : QStringLiteral("Note: %1").arg(text));
}

void TfrmFound::clearNote()
{
    if (!Panel2->text().isEmpty())
        Panel2->clear();
}

void TfrmFound::fill()
{
    m_filling = true;
    const int current = sgStrings->currentRow();
    sgStrings->setRowCount(m_list->rowCount());
    for (int r = 1; r <= m_list->rowCount(); ++r) {
        const TvxFoundString &row = m_list->row(r);
        const QString cells[] = {row.id, row.text, row.replacement, row.sourceLine};
        for (int c = 0; c < 4; ++c) {
            QTableWidgetItem *item = sgStrings->item(r - 1, c);
            if (!item)
                sgStrings->setItem(r - 1, c, new QTableWidgetItem(cells[c]));
            else if (item->text() != cells[c])
                item->setText(cells[c]);
        }
    }
    if (m_list->rowCount() > 0)
        sgStrings->setCurrentCell(qBound(0, current, m_list->rowCount() - 1), qMax(0, sgStrings->currentColumn()));
    m_filling = false;
    enableCommands();
    sgStrings->viewport()->update();
}

void TfrmFound::enableCommands()
{
    const bool rows = m_list->rowCount() > 0;
    for (QWidget *w : {static_cast<QWidget *>(btDelete), static_cast<QWidget *>(btID)})
        w->setEnabled(rows);
    Delete1->setEnabled(rows);
    StartID1->setEnabled(rows);
}

int TfrmFound::currentDataRow() const
{
    const int r = sgStrings->currentRow();
    return r < 0 ? (m_list->rowCount() > 0 ? 1 : 0) : r + 1;
}

void TfrmFound::cellChanged(int row, int column)
{
    if (m_filling)
        return;
    const int r = row + 1;
    if (r < 1 || r > m_list->rowCount())
        return;
    const QString text = sgStrings->item(row, column)->text();
    switch (column) {
    case 0: m_list->setId(r, text); break;
    case 1: m_list->setText(r, text); break;
    case 2: m_list->setReplacement(r, text); break;
    default: return; // the source line is for reading only
    }
    fill();
}

void TfrmFound::btOKClick()
{
    if (m_list->changed()
        && QMessageBox::warning(this, windowTitle(), Msg::changedColumns(), QMessageBox::Yes | QMessageBox::No)
               != QMessageBox::Yes)
        return;
    accept();
}

void TfrmFound::btDeleteClick()
{
    if (m_list->rowCount() == 0)
        return;
    if (m_list->marks().isEmpty()) {
        const int r = currentDataRow();
        if (QMessageBox::question(this, windowTitle(),
                                  QStringLiteral("Delete selected row (") + m_list->row(r).id + QStringLiteral(")?"),
                                  QMessageBox::Yes | QMessageBox::No)
            != QMessageBox::Yes)
            return;
        m_list->deleteRow(r);
    } else {
        if (QMessageBox::question(this, windowTitle(), QStringLiteral("Delete selected rows?"),
                                  QMessageBox::Yes | QMessageBox::No)
            != QMessageBox::Yes)
            return;
        m_list->deleteMarked();
    }
    fill();
}

void TfrmFound::btIDClick()
{
    if (m_list->rowCount() == 0)
        return;
    bool ok = false;
    const QString answer = QInputDialog::getText(this, QStringLiteral("TVexil Expert"),
                                                 QStringLiteral("Input start ID (IDS_):"), QLineEdit::Normal,
                                                 m_list->startIdSuggestion(), &ok);
    if (!ok)
        return;
    QString error;
    if (!m_list->applyStartId(answer, &error))
        QMessageBox::warning(this, windowTitle(), error.isEmpty() ? Msg::startIdNotInteger() : error);
    fill();
}

void TfrmFound::Markfordelete1Click()
{
    if (m_list->rowCount() == 0)
        return;
    m_list->toggleMark(currentDataRow());
    sgStrings->viewport()->update();
}

void TfrmFound::Invertselection1Click()
{
    m_list->invertMarks();
    sgStrings->viewport()->update();
}

void TfrmFound::TypecasttoPChar1Click()
{
    if (m_list->rowCount() == 0)
        return;
    m_list->castToCharPointer(currentDataRow());
    fill();
}

void TfrmFound::gridClick(int row, Qt::KeyboardModifiers modifiers)
{
    if (row < 1 || row > m_list->rowCount())
        return;
    if (modifiers & Qt::ControlModifier) {
        m_list->toggleMark(row);
    } else if ((modifiers & Qt::ShiftModifier) && !m_list->marks().isEmpty()) {
        QString error;
        if (!m_list->shiftClick(row, &error))
            QMessageBox::critical(this, windowTitle(), error);
    }
    sgStrings->viewport()->update();
}

bool TfrmFound::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == sgStrings->viewport() && event->type() == QEvent::MouseButtonPress) {
        auto *mouse = static_cast<QMouseEvent *>(event);
        const Qt::KeyboardModifiers mods = mouse->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
        if (mouse->button() == Qt::LeftButton && mods) {
            const int row = sgStrings->rowAt(mouse->position().toPoint().y());
            if (row >= 0) {
                sgStrings->setCurrentCell(row, qMax(0, sgStrings->columnAt(mouse->position().toPoint().x())));
                gridClick(row + 1, mods);
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}
