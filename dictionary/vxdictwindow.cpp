#include "vxdictwindow.h"

#include "vxtmx.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {
// The units' view, telling whether an in-place editor is open.
class TvxUnitView : public QTableView
{
public:
    bool isEditing() const { return state() == QAbstractItemView::EditingState; }
};
} // namespace

// ---------------------------------------------------------------- model

TvxDictUnitModel::TvxDictUnitModel(TvxDictionaryStore *store, QObject *parent)
    : QAbstractTableModel(parent), m_store(store)
{
}

void TvxDictUnitModel::refresh()
{
    beginResetModel();
    m_languages.clear();
    m_units.clear();
    QString error;
    try {
        if (m_store->isOpen()) {
            m_languages = m_store->languages();
            m_units = m_store->units(m_filter);
        }
    } catch (const EDictionaryError &e) {
        m_units.clear();
        error = e.message();
    }
    endResetModel();
    if (!error.isEmpty())
        emit failed(error);
}

void TvxDictUnitModel::setFilter(const QString &filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    refresh();
}

int TvxDictUnitModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_units.size();
}

int TvxDictUnitModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_languages.size();
}

QVariant TvxDictUnitModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_units.size() || index.column() >= m_languages.size())
        return QVariant();
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::ToolTipRole)
        return m_units.at(index.row()).texts.value(index.column());
    return QVariant();
}

QVariant TvxDictUnitModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Horizontal)
        return m_languages.value(section);
    return section + 1;
}

Qt::ItemFlags TvxDictUnitModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && !m_store->isReadOnly())
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool TvxDictUnitModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.row() >= m_units.size())
        return false;
    const QString text = value.toString();
    TvxDictionaryStore::Unit &unit = m_units[index.row()];
    if (unit.texts.value(index.column()) == text)
        return true;
    try {
        m_store->setSegment(unit.id, index.column(), text);
    } catch (const EDictionaryError &e) {
        emit failed(e.message());
        return false;
    }
    unit.texts[index.column()] = text;
    const bool empty = std::all_of(unit.texts.cbegin(), unit.texts.cend(),
                                   [](const QString &t) { return t.isEmpty(); });
    if (empty) {
        // The store drops a unit left without texts; so does the table.
        beginRemoveRows(QModelIndex(), index.row(), index.row());
        m_units.remove(index.row());
        endRemoveRows();
    } else {
        emit dataChanged(index, index);
    }
    emit edited();
    return true;
}

void TvxDictUnitModel::deleteRows(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (int row : rows) {
        if (row < 0 || row >= m_units.size())
            continue;
        try {
            m_store->deleteUnit(m_units.at(row).id);
        } catch (const EDictionaryError &e) {
            emit failed(e.message());
            return;
        }
        beginRemoveRows(QModelIndex(), row, row);
        m_units.remove(row);
        endRemoveRows();
    }
    emit edited();
}

// --------------------------------------------------------------- window

TfrmDictionary::TfrmDictionary(TvxDictionaryStore *store, QWidget *parent)
    : QMainWindow(parent), m_store(store), m_model(new TvxDictUnitModel(store, this)), m_folder(QDir::homePath())
{
    setObjectName(QStringLiteral("frmDictionary"));
    setWindowTitle(tr("Dictionary"));
    resize(760, 460);

    actSave = new QAction(tr("&Save"), this);
    actSave->setObjectName(QStringLiteral("actSave"));
    actSave->setShortcut(QKeySequence::Save);
    actImport = new QAction(tr("&Import TMX..."), this);
    actImport->setObjectName(QStringLiteral("actImport"));
    actExport = new QAction(tr("&Export TMX..."), this);
    actExport->setObjectName(QStringLiteral("actExport"));
    auto *actClose = new QAction(tr("&Close"), this);
    actClose->setObjectName(QStringLiteral("actClose"));
    actClose->setShortcut(QKeySequence::Close);
    actAddLanguage = new QAction(tr("&Add language..."), this);
    actAddLanguage->setObjectName(QStringLiteral("actAddLanguage"));
    actDelete = new QAction(tr("&Delete unit"), this);
    actDelete->setObjectName(QStringLiteral("actDelete"));
    actDelete->setShortcut(QKeySequence::Delete);

    QMenu *fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addAction(actSave);
    fileMenu->addSeparator();
    fileMenu->addAction(actImport);
    fileMenu->addAction(actExport);
    fileMenu->addSeparator();
    fileMenu->addAction(actClose);
    QMenu *editMenu = menuBar()->addMenu(tr("&Edit"));
    editMenu->addAction(actAddLanguage);
    editMenu->addAction(actDelete);

    QToolBar *toolBar = addToolBar(tr("Commands"));
    toolBar->setObjectName(QStringLiteral("tbCommands"));
    toolBar->setMovable(false);
    toolBar->addAction(actSave);
    toolBar->addAction(actImport);
    toolBar->addAction(actExport);
    toolBar->addSeparator();
    toolBar->addAction(actAddLanguage);
    toolBar->addAction(actDelete);

    lbLanguages = new QListWidget;
    lbLanguages->setObjectName(QStringLiteral("lbLanguages"));
    auto *languagePane = new QWidget;
    auto *languageLayout = new QVBoxLayout(languagePane);
    languageLayout->setContentsMargins(0, 0, 0, 0);
    auto *languageLabel = new QLabel(tr("&Languages"));
    languageLabel->setBuddy(lbLanguages);
    languageLayout->addWidget(languageLabel);
    languageLayout->addWidget(lbLanguages);

    edSearch = new QLineEdit;
    edSearch->setObjectName(QStringLiteral("edSearch"));
    edSearch->setPlaceholderText(tr("Search in every language"));
    edSearch->setClearButtonEnabled(true);
    tvUnits = new TvxUnitView;
    tvUnits->setObjectName(QStringLiteral("tvUnits"));
    tvUnits->setModel(m_model);
    tvUnits->setSelectionBehavior(QAbstractItemView::SelectRows);
    tvUnits->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                             | QAbstractItemView::AnyKeyPressed);
    tvUnits->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    tvUnits->verticalHeader()->setDefaultSectionSize(tvUnits->fontMetrics().height() + 8);
    auto *unitPane = new QWidget;
    auto *unitLayout = new QVBoxLayout(unitPane);
    unitLayout->setContentsMargins(0, 0, 0, 0);
    auto *searchRow = new QHBoxLayout;
    auto *searchLabel = new QLabel(tr("Searc&h:"));
    searchLabel->setBuddy(edSearch);
    searchRow->addWidget(searchLabel);
    searchRow->addWidget(edSearch);
    unitLayout->addLayout(searchRow);
    unitLayout->addWidget(tvUnits);

    auto *splitter = new QSplitter;
    splitter->addWidget(languagePane);
    splitter->addWidget(unitPane);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({150, 600});
    auto *central = new QWidget;
    auto *centralLayout = new QVBoxLayout(central);
    centralLayout->setContentsMargins(6, 6, 6, 6);
    centralLayout->addWidget(splitter);
    setCentralWidget(central);

    lbCount = new QLabel;
    lbCount->setObjectName(QStringLiteral("lbCount"));
    statusBar()->addPermanentWidget(lbCount);

    m_refreshTimer.setSingleShot(true);
    m_refreshTimer.setInterval(150);
    connect(&m_refreshTimer, &QTimer::timeout, this, &TfrmDictionary::refresh);
    connect(edSearch, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model->setFilter(text);
        updateStatus();
    });
    connect(m_model, &TvxDictUnitModel::failed, this, &TfrmDictionary::showError);
    connect(m_model, &TvxDictUnitModel::edited, this, &TfrmDictionary::updateStatus);
    connect(actSave, &QAction::triggered, this, &TfrmDictionary::save);
    connect(actImport, &QAction::triggered, this, &TfrmDictionary::importTmx);
    connect(actExport, &QAction::triggered, this, &TfrmDictionary::exportTmx);
    connect(actClose, &QAction::triggered, this, &QWidget::close);
    connect(actAddLanguage, &QAction::triggered, this, &TfrmDictionary::addLanguage);
    connect(actDelete, &QAction::triggered, this, &TfrmDictionary::deleteSelected);
    connect(tvUnits->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TfrmDictionary::updateActions);
    connect(m_model, &QAbstractItemModel::modelReset, this, &TfrmDictionary::updateActions);
    updateActions();
}

void TfrmDictionary::refresh()
{
    m_refreshTimer.stop();
    if (!isVisible()) {
        m_stale = true;
        return;
    }
    m_stale = false;
    // An open in-place editor would lose its text to the reset: wait for it.
    if (static_cast<TvxUnitView *>(tvUnits)->isEditing()) {
        m_refreshTimer.start();
        return;
    }
    lbLanguages->clear();
    lbLanguages->addItems(m_store->languages());
    m_model->refresh();
    updateStatus();
}

void TfrmDictionary::storeChanged()
{
    if (isVisible())
        m_refreshTimer.start();
    else
        m_stale = true;
}

void TfrmDictionary::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (m_stale)
        refresh();
}

void TfrmDictionary::updateStatus()
{
    QString text;
    try {
        if (m_store->isOpen()) {
            const int count = m_store->unitCount();
            text = count == 1 ? tr("1 unit") : tr("%1 units").arg(count);
            if (!m_model->filter().isEmpty())
                text = tr("%1 shown of %2").arg(m_model->rowCount()).arg(text);
            if (m_store->isReadOnly())
                text += tr(" (read-only)");
            else if (m_store->isModified())
                text += tr(" (not saved)");
        } else {
            text = m_store->errorString().isEmpty() ? tr("No dictionary is open.") : m_store->errorString();
        }
    } catch (const EDictionaryError &e) {
        text = e.message();
    }
    lbCount->setText(text);
    updateActions();
}

void TfrmDictionary::updateActions()
{
    const bool writable = m_store->isOpen() && !m_store->isReadOnly();
    actSave->setEnabled(writable);
    actImport->setEnabled(writable);
    actAddLanguage->setEnabled(writable);
    actExport->setEnabled(m_store->isOpen());
    actDelete->setEnabled(writable && tvUnits->selectionModel()->hasSelection());
}

void TfrmDictionary::showError(const QString &message)
{
    QMessageBox::warning(this, windowTitle(), message);
}

bool TfrmDictionary::save()
{
    if (m_store->save()) {
        statusBar()->showMessage(tr("Saved."), 3000);
        updateStatus();
        return true;
    }
    if (!m_store->isReadOnly())
        showError(m_store->errorString());
    return false;
}

void TfrmDictionary::importTmx()
{
    const QString fileName = QFileDialog::getOpenFileName(
        this, tr("Import TMX"), m_folder, tr("TMX files (*.tmx);;All files (*)"), nullptr,
        QFileDialog::DontUseNativeDialog);
    if (fileName.isEmpty())
        return;
    m_folder = QFileInfo(fileName).absolutePath();
    QString error;
    const int count = Vexil::importTmx(*m_store, fileName, &error);
    if (count < 0) {
        showError(error);
        return;
    }
    refresh();
    statusBar()->showMessage(count == 1 ? tr("1 unit imported.") : tr("%1 units imported.").arg(count),
                             5000);
}

void TfrmDictionary::exportTmx()
{
    QString fileName = QFileDialog::getSaveFileName(this, tr("Export TMX"), m_folder,
                                                    tr("TMX files (*.tmx);;All files (*)"), nullptr,
                                                    QFileDialog::DontUseNativeDialog);
    if (fileName.isEmpty())
        return;
    m_folder = QFileInfo(fileName).absolutePath();
    QString error;
    if (!Vexil::exportTmx(*m_store, fileName, &error)) {
        showError(error);
        return;
    }
    statusBar()->showMessage(tr("Exported to %1.").arg(QDir::toNativeSeparators(fileName)), 5000);
}

void TfrmDictionary::deleteSelected()
{
    QList<int> rows;
    for (const QModelIndex &index : tvUnits->selectionModel()->selectedRows())
        rows.append(index.row());
    if (rows.isEmpty())
        return;
    const QString question = rows.size() == 1 ? tr("Delete the selected unit?")
                                              : tr("Delete the %1 selected units?").arg(rows.size());
    if (QMessageBox::question(this, windowTitle(), question) != QMessageBox::Yes)
        return;
    m_model->deleteRows(rows);
}

void TfrmDictionary::addLanguage()
{
    bool ok = false;
    const QString name = QInputDialog::getText(this, tr("Add language"), tr("Language name:"),
                                               QLineEdit::Normal, QString(), &ok);
    if (!ok || name.trimmed().isEmpty())
        return;
    try {
        m_store->addLanguage(name.trimmed());
    } catch (const EDictionaryError &e) {
        showError(e.message());
        return;
    }
    refresh();
}

void TfrmDictionary::closeEvent(QCloseEvent *event)
{
    // Closing the window ends the program; what was changed is kept.
    if (m_store->isOpen() && m_store->isModified() && !m_store->save()) {
        const auto answer = QMessageBox::warning(
            this, windowTitle(),
            tr("%1\n\nClose anyway and lose the changes since the last save?").arg(m_store->errorString()),
            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes) {
            event->ignore();
            return;
        }
    }
    QMainWindow::closeEvent(event);
    emit closedByUser();
}
