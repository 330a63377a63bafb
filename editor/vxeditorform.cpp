#include "vxeditorform.h"

#include "vxbusservice.h"
#include "vxcategoryfile.h"
#include "vxcelldelegate.h"
#include "vxcomp.h"
#include "vxdictionaryclient.h"
#include "vxdictionarycommands.h"
#include "vxerrors.h"
#include "vxformstorage.h"
#include "vxgridheader.h"
#include "vxgridmodel.h"
#include "vxmultilineeditor.h"
#include "vxsettings.h"
#include "vxstringlist.h"

#include <QtCore/QMimeData>
#include <QtCore/QRegularExpression>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QStatusTipEvent>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <exception>

namespace {

const QString keyIdWarning = QStringLiteral("DON'T FORGET TO CHANGE THIS ID IN YOUR SOURCE!!!");

// A hint is a short text for the tool tip and a long one for the status
// bar, joined by a bar; without a bar both are the whole text.
void setHint(QWidget *widget, const QString &hint)
{
    const qsizetype bar = hint.indexOf(QLatin1Char('|'));
    widget->setToolTip(bar < 0 ? hint : hint.left(bar));
    widget->setStatusTip(bar < 0 ? hint : hint.mid(bar + 1));
}

bool usesLanguageFonts(const QString &category)
{
    static const QStringList plain{QStringLiteral("Fonts"), QStringLiteral("CharSets"), QStringLiteral("Strings"),
                                   QStringLiteral("DlgsCaptions"), QStringLiteral("Locales")};
    return !plain.contains(category);
}

bool isListCategory(const QString &category)
{
    return category == QLatin1String("Fonts") || category == QLatin1String("CharSets");
}

QStringList charSetNames()
{
    QStringList names;
    for (const char *name : Vexil::CHARSETSTR)
        names << QString::fromLatin1(name);
    return names;
}

std::unique_ptr<QSettings> editorKey()
{
    return Vexil::openSettingsKey(Vexil::toolsKeyPath() + QStringLiteral("\\EditorForm"));
}

} // namespace

TvxEditorForm::TvxEditorForm(TvxCustomLang *component, const QString &categoryName, TStringsType kind,
                             const TvxStringList *table, QWidget *parent)
    : QDialog(parent)
    , m_component(component)
    , m_categoryName(categoryName)
    , m_kind(kind)
    , m_table(table)
    , m_model(new TvxGridModel(this))
    , m_delegate(new TvxCellDelegate(this))
{
    setObjectName(QStringLiteral("DlgForm"));
    setAcceptDrops(true);
    setSizeGripEnabled(true);
    createControls();
    resize(640, 400);
}

TvxEditorForm::~TvxEditorForm()
{
    // Focus moves while the children go; the form no longer follows it.
    disconnect(qApp, nullptr, this, nullptr);
}

QChar TvxEditorForm::fileDelimiter() const
{
    const QString caption = m_sbDelimiter->text();
    return caption.isEmpty() ? QLatin1Char('|') : caption.at(0);
}

QString TvxEditorForm::dictionaryMenuCaption() const
{
    return QStringLiteral("Dictionary");
}

void TvxEditorForm::createControls()
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    auto *toolBar = new QWidget(this);
    toolBar->setObjectName(QStringLiteral("ToolBar"));
    auto *tools = new QHBoxLayout(toolBar);
    tools->setContentsMargins(2, 2, 2, 2);
    tools->setSpacing(1);
    const auto button = [this, toolBar, tools](const char *name, const QString &text, QStyle::StandardPixmap icon,
                                               const QString &hint) {
        auto *b = new QToolButton(toolBar);
        b->setObjectName(QLatin1String(name));
        b->setText(text);
        if (icon != QStyle::SP_CustomBase) {
            b->setIcon(style()->standardIcon(icon));
            b->setToolButtonStyle(Qt::ToolButtonIconOnly);
        }
        b->setAutoRaise(true);
        b->setFocusPolicy(Qt::NoFocus);
        setHint(b, hint);
        tools->addWidget(b);
        return b;
    };
    const auto separator = [toolBar, tools] {
        auto *line = new QFrame(toolBar);
        line->setFrameShape(QFrame::VLine);
        line->setFrameShadow(QFrame::Sunken);
        tools->addSpacing(3);
        tools->addWidget(line);
        tools->addSpacing(3);
    };
    m_sbAdd = button("sbAdd", QStringLiteral("+"), QStyle::SP_FileDialogNewFolder,
                     QStringLiteral("Add Ctrl+A|Add new string"));
    m_sbDel = button("sbDel", QStringLiteral("-"), QStyle::SP_TrashIcon,
                     QStringLiteral("Delete Ctrl+R|Delete selected line"));
    separator();
    m_sbOK = button("sbOK", QStringLiteral("OK"), QStyle::SP_DialogApplyButton,
                    QStringLiteral("Apply Ctrl+K|Apply changes and close form"));
    m_sbCancel = button("sbCancel", QStringLiteral("Cancel"), QStyle::SP_DialogCancelButton,
                        QStringLiteral("Close Ctrl+N|Close form without changes"));
    separator();
    m_sbLoad = button("sbLoad", QStringLiteral("Load"), QStyle::SP_DialogOpenButton,
                      QStringLiteral("Load Ctrl+L|Load strings from file..."));
    m_sbSave = button("sbSave", QStringLiteral("Save"), QStyle::SP_DialogSaveButton,
                      QStringLiteral("Save Ctrl+S|Save strings to file..."));
    m_sbDelimiter = button("sbDelimiter", QStringLiteral("|"), QStyle::SP_CustomBase,
                           QStringLiteral("Delimiter|Change delimiter..."));
    m_sbDelimiter->setCheckable(true);
    m_sbDelimiter->setMinimumWidth(24);
    m_edDelim = new QLineEdit(toolBar);
    m_edDelim->setObjectName(QStringLiteral("edDelim"));
    m_edDelim->setMaxLength(1);
    m_edDelim->setFixedWidth(24);
    setHint(m_edDelim, QStringLiteral("Type here new delimiter"));
    m_edDelim->hide();
    m_edDelim->installEventFilter(this);
    tools->addWidget(m_edDelim);
    separator();
    m_sbLanguages = button("sbLanguages", QStringLiteral("Languages"), QStyle::SP_CustomBase,
                           QStringLiteral("Languages|Input language names..."));
    m_sbClear = button("sbClear", QStringLiteral("Clear"), QStyle::SP_DialogResetButton,
                       QStringLiteral("Clear|Clear all translation information."));
    separator();
    m_sbDictMan = button("sbDictMan", QStringLiteral("Dictionary"), QStyle::SP_FileDialogContentsView,
                         QStringLiteral("Dictionary (Ctrl+Alt+D)|Run dictionary manager"));
    m_sbDictMan->setCheckable(true);
    m_sbDictFind = button("sbDictFind", QStringLiteral("Find"), QStyle::SP_FileDialogDetailedView,
                          QStringLiteral("Find translation (Ctrl+Alt+G)|Find translation of selected item in dictionary"));
    m_sbDictAuto = button("sbDictAuto", QStringLiteral("Auto"), QStyle::SP_MediaSeekForward,
                          QStringLiteral("Auto-translate (Ctrl+Alt+T)|Translate all items"));
    m_sbDictAdd = button("sbDictAdd", QStringLiteral("Add"), QStyle::SP_ArrowRight,
                         QStringLiteral("Add to dictionary (Ctrl+Alt+R)|Add selected row string to dictionary"));
    m_sbDictAddAll = button("sbDictAddAll", QStringLiteral("All"), QStyle::SP_ArrowDown,
                            QStringLiteral("Add all to dictionary (Ctrl+Alt+A)|Add all strings to dictionary"));
    tools->addStretch(1);
    m_cbComponents = new QComboBox(toolBar);
    m_cbComponents->setObjectName(QStringLiteral("cbComponents"));
    setHint(m_cbComponents, QStringLiteral("Componet|Fast moving through components' list"));
    m_cbComponents->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_cbComponents->setMinimumContentsLength(18);
    m_cbComponents->setMaxVisibleItems(20);
    tools->addWidget(m_cbComponents);
    layout->addWidget(toolBar);

    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("Grid1"));
    m_header = new TvxGridHeader(m_grid);
    m_header->setObjectName(QStringLiteral("Grid1Header"));
    m_grid->setHorizontalHeader(m_header);
    m_grid->setModel(m_model);
    m_grid->setItemDelegate(m_delegate);
    m_grid->verticalHeader()->hide();
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(18);
    m_grid->verticalHeader()->setMinimumSectionSize(12);
    m_header->setDefaultSectionSize(120);
    m_header->setStretchLastSection(false);
    m_grid->setWordWrap(false);
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    m_grid->installEventFilter(this);
    layout->addWidget(m_grid, 1);
    m_cbComponents->setModel(m_model);
    m_cbComponents->setModelColumn(0);

    m_statusBar = new QStatusBar(this);
    m_statusBar->setObjectName(QStringLiteral("StatusBar1"));
    m_statusBar->setSizeGripEnabled(false);
    m_differenceLabel = new QLabel(m_statusBar);
    m_differenceLabel->setObjectName(QStringLiteral("DifferenceCount"));
    m_statusBar->addPermanentWidget(m_differenceLabel);
    layout->addWidget(m_statusBar);

    // Commands: each works from its button, its menu item and its shortcut.
    const auto command = [this](const char *name, const QString &text, const QKeySequence &key) {
        auto *a = new QAction(text, this);
        a->setObjectName(QLatin1String(name));
        if (!key.isEmpty()) {
            a->setShortcut(key);
            a->setShortcutContext(Qt::WindowShortcut);
        }
        addAction(a);
        return a;
    };
    m_popupMenu2 = new QMenu(this);
    m_popupMenu2->setObjectName(QStringLiteral("PopupMenu2"));
    m_multiline1 = command("Multiline1", QStringLiteral("&Multiline..."), QKeySequence(Qt::CTRL | Qt::Key_Return));
    m_multiline1->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)});
    m_popupMenu2->addAction(m_multiline1);
    m_n2 = m_popupMenu2->addSeparator();
    m_n2->setObjectName(QStringLiteral("N2"));
    QAction *ok1 = command("OK1", QStringLiteral("&OK"), QKeySequence(Qt::CTRL | Qt::Key_K));
    QAction *cancel1 = command("Cancel1", QStringLiteral("Ca&ncel"), QKeySequence(Qt::CTRL | Qt::Key_N));
    QAction *add1 = command("Add1", QStringLiteral("&Add"), QKeySequence(Qt::CTRL | Qt::Key_A));
    QAction *remove1 = command("Remove1", QStringLiteral("&Remove"), QKeySequence(Qt::CTRL | Qt::Key_R));
    QAction *load1 = command("Load1", QStringLiteral("&Load..."), QKeySequence(Qt::CTRL | Qt::Key_L));
    QAction *save1 = command("Save1", QStringLiteral("&Save..."), QKeySequence(Qt::CTRL | Qt::Key_S));
    m_popupMenu2->addActions({ok1, cancel1, add1, remove1, load1, save1});
    m_popupMenu2->addSeparator();
    m_cut1 = command("Cut1", QStringLiteral("Cu&t"), QKeySequence(Qt::CTRL | Qt::Key_X));
    m_copy1 = command("Copy1", QStringLiteral("&Copy"), QKeySequence(Qt::CTRL | Qt::Key_C));
    m_paste1 = command("Paste1", QStringLiteral("&Paste"), QKeySequence(Qt::CTRL | Qt::Key_V));
    m_delete1 = command("Delete1", QStringLiteral("&Delete"), QKeySequence(Qt::CTRL | Qt::Key_Delete));
    m_popupMenu2->addActions({m_cut1, m_copy1, m_paste1, m_delete1});
    m_popupMenu2->addSeparator()->setObjectName(QStringLiteral("N1"));
    m_sortBy = m_popupMenu2->addMenu(QStringLiteral("&Sort by"));
    m_sortBy->setObjectName(QStringLiteral("Sortby1"));
    m_sortBy->menuAction()->setObjectName(QStringLiteral("Sortby1Item"));
    m_popupMenu2->addSeparator()->setObjectName(QStringLiteral("N3"));
    m_dictionary = m_popupMenu2->addMenu(dictionaryMenuCaption());
    m_dictionary->setObjectName(QStringLiteral("Dictionary1"));
    QAction *show1 = command("Show1", QStringLiteral("&Show dictionary"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_D));
    show1->setCheckable(true);
    QAction *addRow1 = command("Addrow1", QStringLiteral("Add &row"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_R));
    QAction *addAll1 = command("AddAll1", QStringLiteral("Add &all"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_A));
    QAction *get1 = command("Gettranslation1", QStringLiteral("&Get translation"),
                            QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_G));
    QAction *all1 = command("Translateall1", QStringLiteral("&Translate all"),
                            QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_T));
    m_dictionary->addActions({show1, addRow1, addAll1, get1, all1});

    // Each dictionary item is enabled exactly when its button is.
    const QList<QPair<QAction *, QToolButton *>> dictionaryItems{
        {show1, m_sbDictMan}, {addRow1, m_sbDictAdd}, {addAll1, m_sbDictAddAll},
        {get1, m_sbDictFind}, {all1, m_sbDictAuto}};
    connect(m_dictionary, &QMenu::aboutToShow, this, [this, dictionaryItems, show1] {
        for (const auto &item : dictionaryItems)
            item.first->setEnabled(item.second->isEnabled());
        show1->setChecked(m_sbDictMan->isChecked());
    });
    for (const auto &item : dictionaryItems) {
        QToolButton *b = item.second;
        connect(item.first, &QAction::triggered, b, [b] {
            if (b->isEnabled())
                b->click();
        });
    }

    m_popupMenu1 = new QMenu(this);
    m_popupMenu1->setObjectName(QStringLiteral("PopupMenu1"));
    QAction *clearField1 = new QAction(QStringLiteral("&Clear field"), m_popupMenu1);
    clearField1->setObjectName(QStringLiteral("Clearfield1"));
    clearField1->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    clearField1->setShortcutContext(Qt::WidgetShortcut);
    m_popupMenu1->addAction(clearField1);

    const auto buttonCommand = [this](QToolButton *b, QAction *a, void (TvxEditorForm::*slot)()) {
        connect(b, &QToolButton::clicked, this, [this, slot] { guarded([this, slot] { (this->*slot)(); }); });
        connect(a, &QAction::triggered, b, [b] {
            if (b->isEnabled())
                b->click();
        });
    };
    buttonCommand(m_sbAdd, add1, &TvxEditorForm::sbAddClick);
    buttonCommand(m_sbDel, remove1, &TvxEditorForm::sbDelClick);
    buttonCommand(m_sbOK, ok1, &TvxEditorForm::BitBtn1Click);
    buttonCommand(m_sbCancel, cancel1, &TvxEditorForm::BitBtn2Click);
    buttonCommand(m_sbLoad, load1, &TvxEditorForm::sbLoadClick);
    buttonCommand(m_sbSave, save1, &TvxEditorForm::sbSaveClick);
    connect(m_sbLanguages, &QToolButton::clicked, this, [this] { guarded([this] { sbLanguagesClick(); }); });
    connect(m_sbDictMan, &QToolButton::clicked, this, [this] { guarded([this] { sbDictManClick(); }); });
    connect(m_sbDictAdd, &QToolButton::clicked, this, [this] { guarded([this] { sbDictAddClick(); }); });
    connect(m_sbDictAddAll, &QToolButton::clicked, this, [this] { guarded([this] { sbDictAddAllClick(); }); });
    connect(m_sbDictFind, &QToolButton::clicked, this, [this] { guarded([this] { sbDictFindClick(); }); });
    connect(m_sbDictAuto, &QToolButton::clicked, this, [this] { guarded([this] { sbDictAutoClick(); }); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { gridFocusChanged(now); });
    connect(m_sbClear, &QToolButton::clicked, this, [this] { guarded([this] { sbClearClick(); }); });
    connect(m_multiline1, &QAction::triggered, this, [this] { guarded([this] { Multiline1Click(); }); });
    connect(m_cut1, &QAction::triggered, this, &TvxEditorForm::cutCell);
    connect(m_copy1, &QAction::triggered, this, &TvxEditorForm::copyCell);
    connect(m_paste1, &QAction::triggered, this, &TvxEditorForm::pasteCell);
    connect(m_delete1, &QAction::triggered, this, &TvxEditorForm::deleteCell);
    connect(m_sbDelimiter, &QToolButton::toggled, this, &TvxEditorForm::delimiterToggled);
    connect(m_edDelim, &QLineEdit::returnPressed, this, [this] { m_grid->setFocus(); });
    connect(m_header, &TvxGridHeader::sortRequested, this, [this](int column) {
        guarded([this, column] { sortByColumn(column); });
    });
    connect(m_grid, &QTableView::customContextMenuRequested, this, &TvxEditorForm::popupMenu2);
    connect(m_grid, &QTableView::doubleClicked, this, &TvxEditorForm::gridDoubleClicked);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) { cellSelected(current); });
    connect(m_cbComponents, &QComboBox::activated, this, &TvxEditorForm::cbComponentsChosen);
    connect(m_delegate, &QAbstractItemDelegate::commitData, this, [this] {
        if (m_grid->currentIndex().column() == 0)
            confirmKeyEdit();
    });
    connect(m_model, &TvxGridModel::differenceCountChanged, this, &TvxEditorForm::showDifferenceCount);
    connect(m_grid->horizontalScrollBar(), &QScrollBar::valueChanged, this, &TvxEditorForm::hideList);
    connect(m_grid->verticalScrollBar(), &QScrollBar::valueChanged, this, &TvxEditorForm::hideList);
    connect(m_header, &QHeaderView::sectionResized, this, &TvxEditorForm::hideList);

    m_odLoad = new QFileDialog(this, QStringLiteral("Load strings from file"));
    m_odLoad->setObjectName(QStringLiteral("odLoad"));
    m_odLoad->setFileMode(QFileDialog::ExistingFile);
    m_odLoad->setAcceptMode(QFileDialog::AcceptOpen);
    m_sdSave = new QFileDialog(this, QStringLiteral("Save strings to file"));
    m_sdSave->setObjectName(QStringLiteral("sdSave"));
    m_sdSave->setFileMode(QFileDialog::AnyFile);
    m_sdSave->setAcceptMode(QFileDialog::AcceptSave);
    for (QFileDialog *d : {m_odLoad, m_sdSave}) {
        d->setOption(QFileDialog::DontUseNativeDialog);
        d->setNameFilters({QStringLiteral("Translation files (*.lng *.ini)"), QStringLiteral("All files (*)")});
        d->setDefaultSuffix(QStringLiteral("lng"));
    }

    // The editor's own placement is kept between runs, beside its column widths.
    m_storage = new TvxFormStorage(this);
    m_storage->setObjectName(QStringLiteral("vxFormStorage1"));
    m_storage->SetSubKey(Vexil::toolsKeyPath() + QStringLiteral("\\EditorForm"));
}

template<typename F>
void TvxEditorForm::guarded(F &&command)
{
    // A command that fails reports it; nothing leaves the event handler.
    try {
        command();
    } catch (const std::exception &e) {
        showError(QString::fromUtf8(e.what()));
    }
}

int TvxEditorForm::ask(const QString &message, int buttons) const
{
    if (m_component)
        return m_component->MessageDlg(message, mtConfirmation, TMsgDlgButtons(buttons));
    // The component went away with its form: plain boxes still answer.
    QMessageBox::StandardButtons standard;
    if (buttons & mbYes)
        standard |= QMessageBox::Yes;
    if (buttons & mbNo)
        standard |= QMessageBox::No;
    if (buttons & mbCancel)
        standard |= QMessageBox::Cancel;
    const int answer = QMessageBox::question(const_cast<TvxEditorForm *>(this), windowTitle(), message, standard);
    return answer == QMessageBox::Yes ? mrYes : answer == QMessageBox::No ? mrNo : mrCancel;
}

void TvxEditorForm::showError(const QString &message) const
{
    if (m_component)
        m_component->MessageDlg(message, mtError, TMsgDlgButtons(mbOK));
    else
        QMessageBox::warning(const_cast<TvxEditorForm *>(this), windowTitle(), message);
}

void TvxEditorForm::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!m_shown) {
        m_shown = true;
        guarded([this] { FormShow(); });
    }
}

void TvxEditorForm::FormShow()
{
    BuildGrid();
    const QStringList multiline{QStringLiteral("Captions"), QStringLiteral("Hints"), QStringLiteral("Collections"),
                                QStringLiteral("Other Strings"), QStringLiteral("Strings")};
    // Compared as written: the other-strings category is "Other strings",
    // which has no multi-line command.
    const bool withMultiline = multiline.contains(m_categoryName);
    m_multiline1->setVisible(withMultiline);
    m_multiline1->setEnabled(withMultiline);
    m_n2->setVisible(withMultiline);

    const QString delimiter = Vexil::openSettingsKey(Vexil::toolsKeyPath())
                                  ->value(QStringLiteral("Delimiter"), m_sbDelimiter->text())
                                  .toString();
    if (!delimiter.isEmpty())
        m_sbDelimiter->setText(delimiter.left(1));

    if (!Vexil::busServiceAvailable(Vexil::dictionaryServiceName())) {
        for (QToolButton *b : {m_sbDictMan, m_sbDictFind, m_sbDictAuto, m_sbDictAdd, m_sbDictAddAll})
            b->setEnabled(false);
    }
    gridFocusChanged(QApplication::focusWidget());
    m_grid->setFocus();
    if (m_model->rowCount())
        m_grid->setCurrentIndex(m_model->index(0, 1));
}

void TvxEditorForm::BuildGrid()
{
    hideList();
    const QChar delim = m_component ? m_component->LangDelim() : QLatin1Char('\t');
    const int languages = m_component ? m_component->NumOfLanguages() : 1;
    m_model->build(m_table ? m_table->lines() : QStringList(), delim, languages);
    m_delegate->setDelimiter(delim);

    const bool strings = m_categoryName == QLatin1String("Strings");
    m_model->setKeysEditable(strings);
    m_delegate->setFixedKeys(!strings);
    m_model->setCellsEditable(true);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                            | QAbstractItemView::AnyKeyPressed);
    m_grid->setTabKeyNavigation(true);
    m_header->setSectionResizeMode(QHeaderView::Interactive);
    if (!strings) {
        m_sbAdd->setEnabled(false);
        // The literal is compared as it stands, misspelt: every table of the
        // collection kind has its delete command.
        m_sbDel->setEnabled(m_kind == stCollections && m_categoryName != QLatin1String("Colleactions"));
        m_model->setHeader(0, QStringLiteral("Components:"));
    } else {
        m_sbAdd->setEnabled(true);
        m_sbDel->setEnabled(true);
        m_model->setHeader(0, QStringLiteral("TextIDs:"));
        if (m_model->rowCount() == 0)
            m_model->appendRow();
    }
    if (m_categoryName == QLatin1String("DlgsCaptions"))
        m_model->setHeader(0, QStringLiteral("Std. captions"));
    else if (m_categoryName == QLatin1String("Locales"))
        m_model->setHeader(0, QStringLiteral("System locales"));
    else if (m_categoryName == QLatin1String("MultiLines")) {
        m_model->setCellsEditable(false);
        setHint(m_grid, QStringLiteral("Double click (or press \"Enter\") for edit cell"));
    }

    m_header->resizeSection(0, std::max(m_header->defaultSectionSize(), keyColumnWidth() + 5));

    if (isListCategory(m_categoryName)) {
        m_model->setCellsEditable(false);
        m_grid->setTabKeyNavigation(false);
        m_header->setSectionResizeMode(QHeaderView::Fixed);
        delete m_list;
        m_list = new QComboBox(m_grid->viewport());
        m_list->setObjectName(QStringLiteral("cbList"));
        m_list->setEditable(false);
        m_list->addItems(m_categoryName == QLatin1String("Fonts") ? QFontDatabase::families() : charSetNames());
        m_list->setContextMenuPolicy(Qt::CustomContextMenu);
        setHint(m_list, QStringLiteral("Ctrl-Del clear field"));
        m_list->addActions(m_popupMenu1->actions());
        m_list->installEventFilter(this);
        m_list->hide();
        connect(m_list, &QComboBox::customContextMenuRequested, this,
                [this](const QPoint &pos) { m_popupMenu1->exec(m_list->mapToGlobal(pos)); });
        connect(m_list, &QComboBox::activated, this, &TvxEditorForm::listChosen);
        QAction *clearField1 = m_popupMenu1->actions().constFirst();
        clearField1->disconnect(this);
        connect(clearField1, &QAction::triggered, this, [this] {
            if (!m_list)
                return;
            m_list->setCurrentIndex(-1);
            if (m_listCell.isValid())
                m_model->setCell(m_listCell.row(), m_listCell.column(), QString());
        });
    }

    setWindowTitle(QStringLiteral("TVexil.") + m_categoryName + QStringLiteral(" Editor"));
    m_cbComponents->setCurrentIndex(m_model->rowCount() ? 0 : -1);
    m_cbComponents->setVisible(hasComponentList());

    if (m_component && usesLanguageFonts(m_categoryName)) {
        m_model->setFontLookup([this](const QString &base, int language) { return fontLookup(base, language); });
    } else {
        m_model->setFontLookup({});
    }
    const bool checked = m_categoryName != QLatin1String("Fonts") && m_categoryName != QLatin1String("CharSets")
        && m_categoryName != QLatin1String("Locales");
    m_model->setChecksEnabled(checked);
    showDifferenceCount(m_model->differenceCount());
    readEditorSettings();
}

int TvxEditorForm::keyColumnWidth() const
{
    // Shaping every key of a large table takes long; the sum of the
    // characters' advances finds the widest key, which alone is measured.
    const QFontMetrics metrics = m_grid->fontMetrics();
    int latin1[256];
    std::fill(std::begin(latin1), std::end(latin1), -1);
    QHash<char16_t, int> others;
    const auto advance = [&](QChar c) {
        if (c.unicode() < 256) {
            int &w = latin1[c.unicode()];
            if (w < 0)
                w = metrics.horizontalAdvance(c);
            return w;
        }
        auto it = others.constFind(c.unicode());
        if (it == others.cend())
            it = others.insert(c.unicode(), metrics.horizontalAdvance(c));
        return *it;
    };
    int widest = -1;
    int widestSum = 0;
    for (int r = 0; r < m_model->rowCount(); ++r) {
        int sum = 0;
        for (QChar c : m_model->key(r))
            sum += advance(c);
        if (sum > widestSum) {
            widestSum = sum;
            widest = r;
        }
    }
    return widest < 0 ? 0 : std::max(widestSum, metrics.horizontalAdvance(m_model->key(widest)));
}

void TvxEditorForm::readEditorSettings()
{
    // Widths and names of an earlier session. The first value missing ends
    // the walk: the later columns keep their defaults, and until a width was
    // ever saved no column takes the component's language names either.
    const std::unique_ptr<QSettings> settings = editorKey();
    const TvxStringList *names = m_component ? m_component->LangNames() : nullptr;
    for (int c = 1; c < m_model->columnCount(); ++c) {
        bool ok = false;
        const int width = settings->value(QStringLiteral("ColumnWidth") + QString::number(c)).toInt(&ok);
        if (!ok)
            break;
        m_header->resizeSection(c, width);
        if (names && c - 1 < names->count() && !names->at(c - 1).isEmpty()) {
            m_model->setHeader(c, names->at(c - 1));
        } else {
            const QString saved = settings->value(QStringLiteral("Language") + QString::number(c)).toString();
            if (!saved.isEmpty())
                m_model->setHeader(c, saved);
        }
    }
}

void TvxEditorForm::FormClose()
{
    const std::unique_ptr<QSettings> settings = editorKey();
    for (int c = 1; c < m_model->columnCount(); ++c) {
        settings->setValue(QStringLiteral("ColumnWidth") + QString::number(c), m_header->sectionSize(c));
        settings->setValue(QStringLiteral("Language") + QString::number(c), m_model->header(c));
    }
}

void TvxEditorForm::done(int result)
{
    try {
        FormClose();
    } catch (const std::exception &) {
        // Settings that cannot be written do not keep the editor open.
    }
    QDialog::done(result);
}

void TvxEditorForm::reject()
{
    // The close box and Escape: Cancel, once the user agrees.
    if (ask(QStringLiteral("Close ") + windowTitle() + QStringLiteral(" without changes?"), mbYes | mbNo) == mrYes)
        BitBtn2Click();
}

void TvxEditorForm::BitBtn1Click()
{
    // The text being typed counts.
    if (QWidget *editor = m_grid->indexWidget(m_grid->currentIndex()))
        Q_EMIT m_delegate->commitData(editor);
    const QChar delim = m_component ? m_component->LangDelim() : QLatin1Char('\t');
    m_result = m_model->lines(delim);
    hideList();
    if (m_component) {
        m_component->SetLangNames(Vexil::upperCased(m_model->languageHeaders()));
        const int active = m_component->ActiveLanguage();
        const TvxStringList *names = m_component->LangNames();
        if (active >= 1 && active <= names->count())
            m_component->SetLanguage(names->at(active - 1));
    }
    m_applied = true;
    done(mrYes);
}

void TvxEditorForm::BitBtn2Click()
{
    hideList();
    m_applied = false;
    m_closedByButton = true;
    done(mrNo);
}

void TvxEditorForm::rowAdded(int row)
{
    m_grid->setCurrentIndex(m_model->index(row, 0));
}

void TvxEditorForm::sbAddClick()
{
    if (!m_sbAdd->isEnabled())
        return;
    rowAdded(m_model->appendRow());
}

void TvxEditorForm::sbDelClick()
{
    const int row = m_grid->currentIndex().row();
    if (!m_sbDel->isEnabled() || row < 0)
        return;
    if (ask(QStringLiteral("Delete selected row: \"") + m_model->key(row) + QStringLiteral("\"?"), mbYes | mbNo)
        == mrYes)
        m_model->removeDataRow(row);
}

void TvxEditorForm::sbClearClick()
{
    if (ask(QStringLiteral("Delete all information?"), mbYes | mbNo) == mrYes) {
        hideList();
        m_model->clearRows();
    }
}

void TvxEditorForm::sbLanguagesClick()
{
    if (!m_component)
        return;
    for (int c = 1; c < m_model->columnCount(); ++c) {
        QString name = m_model->header(c);
        if (!m_component->InputQuery(QStringLiteral("Languages naming"),
                                     QStringLiteral("Input language name for \"") + name + QStringLiteral("\":"), name))
            break;
        m_model->setHeader(c, name);
    }
}

void TvxEditorForm::sortByColumn(int column)
{
    if (m_categoryName == QLatin1String("Locales") || column < 0 || column >= m_model->columnCount())
        return;
    // The form's own entry stays on top.
    const QString first = m_model->key(0);
    const bool keepFirst = m_component && !first.isEmpty()
        && (first == m_component->ownerName() || first == m_component->ownerClassName());
    hideList();
    m_model->sortByColumn(column, keepFirst);
    m_header->setSortColumn(column);
}

void TvxEditorForm::Multiline1Click()
{
    const QModelIndex cell = m_grid->currentIndex();
    if (!m_multiline1->isVisible() || !cell.isValid())
        return;
    QString result;
    if (ShowMultilineEditor(m_model->cell(cell.row(), cell.column()), m_model->key(cell.row()), mrtText, result, this)
        && !m_model->setCell(cell.row(), cell.column(), result))
        showError(QStringLiteral("The text holds the delimiter and cannot be stored."));
}

void TvxEditorForm::gridDoubleClicked(const QModelIndex &index)
{
    if (m_categoryName != QLatin1String("MultiLines") || !index.isValid() || index.column() == 0)
        return;
    QString result;
    if (ShowMultilineEditor(m_model->cell(index.row(), index.column()), m_model->key(index.row()), mrtCommaText,
                            result, this))
        m_model->setCell(index.row(), index.column(), result);
}

void TvxEditorForm::sbSaveClick()
{
    const QString section = TvxCategoryFile::section(m_kind, m_categoryName);
    if (section.isEmpty() || !m_component)
        return;
    if (m_sdSave->exec() != QDialog::Accepted || m_sdSave->selectedFiles().isEmpty())
        return;
    const TvxCategoryFile::Target target{m_component->ownerName(), m_component->filePrefix(), m_kind, m_categoryName};
    TvxCategoryFile::save(*m_model, target, m_sdSave->selectedFiles().constFirst(), fileDelimiter());
    Vexil::openSettingsKey(Vexil::toolsKeyPath())->setValue(QStringLiteral("Delimiter"), m_sbDelimiter->text());
}

void TvxEditorForm::sbLoadClick()
{
    const QString dropped = std::exchange(m_droppedFile, QString());
    const QString section = TvxCategoryFile::section(m_kind, m_categoryName);
    if (section.isEmpty() || !m_component)
        return;
    QString fileName = dropped;
    if (fileName.isEmpty()) {
        if (m_odLoad->exec() != QDialog::Accepted || m_odLoad->selectedFiles().isEmpty())
            return;
        fileName = m_odLoad->selectedFiles().constFirst();
    }
    if (ask(QStringLiteral("The current settings will be replaced by new information. Continue?"), mbYes | mbNo)
        != mrYes)
        return;
    hideList();
    const TvxCategoryFile::Target target{m_component->ownerName(), m_component->filePrefix(), m_kind, m_categoryName};
    QChar delim = fileDelimiter();
    TvxCategoryFile::load(*m_model, target, fileName, delim, [this](const QString &key) {
        const int answer = ask(QStringLiteral("The translation of \"") + key
                                   + QStringLiteral("\" is already included. Overwrite it?"),
                               mbYes | mbNo | mbCancel);
        return answer == mrYes ? TvxCategoryFile::Yes
            : answer == mrNo   ? TvxCategoryFile::No
                               : TvxCategoryFile::Cancel;
    });
    m_sbDelimiter->setText(QString(delim));
}

void TvxEditorForm::CreateServer()
{
    if (!m_server)
        m_server = std::make_unique<TvxDictionaryClient>(Vexil::dictionaryServiceName());
    const QSignalBlocker block(m_sbDictMan);
    m_sbDictMan->setChecked(true);
}

void TvxEditorForm::FreeServer()
{
    if (m_server && m_server->Save())
        m_server.reset();
}

void TvxEditorForm::sbDictManClick()
{
    if (m_sbDictMan->isChecked()) {
        CreateServer();
        m_server->SetVisible(true);
    } else {
        FreeServer();
    }
}

bool TvxEditorForm::dictionaryReady()
{
    // Languages are named to the dictionary by the column headers.
    if (TvxDictionaryCommands::hasUnnamedLanguage(m_model->languageHeaders())
        && ask(QStringLiteral("You have unnamed languages. Continue?"), mbYes | mbNo) != mrYes)
        return false;
    if (!m_server)
        CreateServer();
    return true;
}

void TvxEditorForm::sbDictAddClick()
{
    const int row = m_grid->currentIndex().row();
    if (dictionaryReady())
        TvxDictionaryCommands::addRow(*m_model, row, *m_server);
}

void TvxEditorForm::sbDictAddAllClick()
{
    if (dictionaryReady())
        TvxDictionaryCommands::addAll(*m_model, *m_server);
}

void TvxEditorForm::sbDictFindClick()
{
    const QModelIndex cell = m_grid->currentIndex();
    if (dictionaryReady())
        TvxDictionaryCommands::find(*m_model, cell.row(), cell.column(), *m_server);
}

void TvxEditorForm::sbDictAutoClick()
{
    if (dictionaryReady())
        TvxDictionaryCommands::autoTranslate(*m_model, *m_server);
}

void TvxEditorForm::gridFocusChanged(QWidget *now)
{
    // Adding a row and finding a cell's translation work on the grid's
    // current cell: they are offered while the grid (or its cell editor)
    // has the focus. A pop-up menu taking the focus leaves them as they are.
    if (!now || qobject_cast<QMenu *>(now) || now->window() != this || !m_sbDictMan->isEnabled())
        return;
    const bool inGrid = now == m_grid || m_grid->isAncestorOf(now);
    m_sbDictAdd->setEnabled(inGrid);
    m_sbDictFind->setEnabled(inGrid);
}

void TvxEditorForm::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void TvxEditorForm::dropEvent(QDropEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    // Only the first file dropped is loaded.
    if (urls.isEmpty() || !urls.first().isLocalFile())
        return;
    event->acceptProposedAction();
    m_droppedFile = urls.first().toLocalFile();
    guarded([this] { sbLoadClick(); });
    m_droppedFile.clear();
}

void TvxEditorForm::cellSelected(const QModelIndex &current)
{
    if (!current.isValid())
        return;
    if (hasComponentList()) {
        const int item = m_model->findKey(m_model->key(current.row()));
        if (item != m_cbComponents->currentIndex())
            m_cbComponents->setCurrentIndex(item);
    }
    if (m_list) {
        if (current.column() >= 1)
            placeList(current);
        else
            hideList();
    }
}

void TvxEditorForm::placeList(const QModelIndex &cell)
{
    m_listCell = cell;
    const QRect r = m_grid->visualRect(cell);
    m_list->setGeometry(r.x(), r.y(), m_header->sectionSize(cell.column()), r.height());
    m_list->setCurrentIndex(m_list->findText(m_model->cell(cell.row(), cell.column()), Qt::MatchExactly));
    m_list->show();
    m_list->raise();
    m_list->setFocus();
}

void TvxEditorForm::hideList()
{
    if (m_list && m_list->isVisible()) {
        m_list->hide();
        if (m_list->hasFocus() || isAncestorOf(QApplication::focusWidget()))
            m_grid->setFocus();
    }
}

void TvxEditorForm::listChosen(int item)
{
    if (m_listCell.isValid() && item >= 0)
        m_model->setCell(m_listCell.row(), m_listCell.column(), m_list->itemText(item));
}

void TvxEditorForm::cbComponentsChosen(int item)
{
    if (!hasComponentList() || item < 0)
        return;
    const int row = m_model->findKey(m_cbComponents->itemText(item));
    if (row >= 0) {
        m_grid->setCurrentIndex(m_model->index(row, 1));
        m_grid->setFocus();
    }
}

void TvxEditorForm::confirmKeyEdit()
{
    m_statusBar->showMessage(keyIdWarning);
}

void TvxEditorForm::showDifferenceCount(int count)
{
    if (count == 0)
        m_differenceLabel->clear();
    else if (count == 1)
        m_differenceLabel->setText(QStringLiteral("1 text differs from the first language"));
    else
        m_differenceLabel->setText(QStringLiteral("%1 texts differ from the first language").arg(count));
}

bool TvxEditorForm::currentCellEditable() const
{
    const QModelIndex cell = m_grid->currentIndex();
    return cell.isValid() && (cell.column() > 0 || m_model->keysEditable());
}

void TvxEditorForm::cutCell()
{
    if (!currentCellEditable())
        return;
    const QModelIndex cell = m_grid->currentIndex();
    QGuiApplication::clipboard()->setText(m_model->cell(cell.row(), cell.column()));
    m_model->setCell(cell.row(), cell.column(), QString());
}

void TvxEditorForm::copyCell()
{
    const QModelIndex cell = m_grid->currentIndex();
    if (cell.isValid())
        QGuiApplication::clipboard()->setText(m_model->cell(cell.row(), cell.column()));
}

void TvxEditorForm::pasteCell()
{
    if (!currentCellEditable())
        return;
    // As a single-line field takes it: up to the first line break.
    QString text = QGuiApplication::clipboard()->text();
    const qsizetype end = text.indexOf(QRegularExpression(QStringLiteral("[\r\n]")));
    if (end >= 0)
        text.truncate(end);
    const QModelIndex cell = m_grid->currentIndex();
    if (!m_model->setCell(cell.row(), cell.column(), text))
        m_statusBar->showMessage(QStringLiteral("The text holds the delimiter and cannot be stored."));
}

void TvxEditorForm::deleteCell()
{
    if (!currentCellEditable())
        return;
    const QModelIndex cell = m_grid->currentIndex();
    m_model->setCell(cell.row(), cell.column(), QString());
}

void TvxEditorForm::popupMenu2(const QPoint &pos)
{
    const QModelIndex under = m_grid->indexAt(pos);
    const bool onCell = under.isValid() && (under.column() > 0 || m_model->keysEditable());
    if (onCell)
        m_grid->setCurrentIndex(under);
    m_cut1->setEnabled(onCell);
    m_copy1->setEnabled(onCell);
    m_delete1->setEnabled(onCell);
    m_paste1->setEnabled(onCell && !QGuiApplication::clipboard()->text().isEmpty());

    m_sortBy->clear();
    for (int c = 0; c < m_model->columnCount(); ++c) {
        QAction *item = m_sortBy->addAction(m_model->header(c));
        item->setObjectName(QStringLiteral("SortItem%1").arg(c + 1));
        connect(item, &QAction::triggered, this, [this, c] { guarded([this, c] { sortByColumn(c); }); });
    }
    m_sortBy->menuAction()->setEnabled(m_categoryName != QLatin1String("Locales"));
    m_popupMenu2->popup(m_grid->viewport()->mapToGlobal(pos));
}

void TvxEditorForm::delimiterToggled(bool down)
{
    if (down) {
        m_edDelim->setText(m_sbDelimiter->text());
        m_edDelim->show();
        m_edDelim->setFocus();
        m_edDelim->selectAll();
    } else {
        delimiterEditDone();
    }
}

void TvxEditorForm::delimiterEditDone()
{
    m_edDelim->hide();
    if (!m_edDelim->text().isEmpty())
        m_sbDelimiter->setText(m_edDelim->text().left(1));
    if (m_sbDelimiter->isChecked()) {
        const QSignalBlocker block(m_sbDelimiter);
        m_sbDelimiter->setChecked(false);
    }
}

QString TvxEditorForm::fontLookup(const QString &base, int language) const
{
    if (!m_component)
        return {};
    const TvxStringList *fonts = m_component->Fonts();
    QString name = m_component->GetStringValue(fonts, base, language);
    if (name.isEmpty())
        name = m_component->GetStringValue(fonts, m_component->ownerClassName(), language);
    if (name.isEmpty())
        name = m_component->GetStringValue(fonts, m_component->ownerClassName(), 1);
    return name;
}

bool TvxEditorForm::event(QEvent *event)
{
    if (event->type() == QEvent::StatusTip) {
        m_statusBar->showMessage(static_cast<QStatusTipEvent *>(event)->tip());
        return true;
    }
    return QDialog::event(event);
}

void TvxEditorForm::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    hideList();
}

bool TvxEditorForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_grid && event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        const QModelIndex cell = m_grid->currentIndex();
        // An Enter that closed an in-place editor reaches the grid too.
        const bool editing = cell.isValid() && m_grid->indexWidget(cell);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && key->modifiers() == Qt::NoModifier
            && !editing) {
            // Enter acts as a double click.
            if (cell.isValid()) {
                if (m_categoryName == QLatin1String("MultiLines"))
                    guarded([this, cell] { gridDoubleClicked(cell); });
                else if (m_model->flags(cell) & Qt::ItemIsEditable)
                    m_grid->edit(cell);
            }
            return true;
        }
        if (key->key() == Qt::Key_Down && key->modifiers() == Qt::NoModifier
            && m_categoryName == QLatin1String("Strings") && cell.row() == m_model->rowCount() - 1) {
            const int row = m_model->appendRow();
            m_grid->setCurrentIndex(m_model->index(row, std::max(cell.column(), 0)));
            return true;
        }
    } else if (watched == m_edDelim && event->type() == QEvent::FocusOut) {
        delimiterEditDone();
    } else if (watched == m_list && event->type() == QEvent::FocusOut
               && static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason) {
        m_list->hide();
    }
    return QDialog::eventFilter(watched, event);
}
