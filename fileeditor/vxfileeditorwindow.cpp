#include "vxfileeditorwindow.h"

#include "memini.h"
#include "vxcategoryfile.h"
#include "vxerrors.h"
#include "vxgridmodel.h"
#include "vxrteditor.h"
#include "vxstringlist.h"

#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QVBoxLayout>

#include <exception>

namespace {

const QString AppTitle = QStringLiteral("Vexil Editor");

// The loader's answer when the form has no entry in the section: a table
// that is simply empty for the file editor (a category being started).
const QString NoInformation = QStringLiteral("There are no information for this property in selected file!");

QString errorText(const std::exception &e)
{
    if (const auto *vexil = dynamic_cast<const EVexilError *>(&e))
        return vexil->message();
    return QString::fromLocal8Bit(e.what());
}

} // namespace

TfrmFileEditor::TfrmFileEditor(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("frmFileEditor"));
    createControls();
    fillLists();
    showFileState();
    resize(1000, 620);
}

TfrmFileEditor::~TfrmFileEditor()
{
    // The editor refers to the component on the owner: it goes first.
    delete m_editor;
}

void TfrmFileEditor::createControls()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    QAction *open = file->addAction(QStringLiteral("&Open..."), this, &TfrmFileEditor::openClick);
    open->setObjectName(QStringLiteral("Open1"));
    open->setShortcut(QKeySequence::Open);
    QAction *close = file->addAction(QStringLiteral("&Close"), this, [this] { closeFile(); });
    close->setObjectName(QStringLiteral("Close1"));
    close->setShortcut(QKeySequence::Close);
    file->addSeparator();
    QAction *exit = file->addAction(QStringLiteral("E&xit"), this, &QWidget::close);
    exit->setObjectName(QStringLiteral("Exit1"));
    exit->setShortcut(QKeySequence::Quit);

    auto *splitter = new QSplitter(this);
    auto *side = new QWidget(splitter);
    auto *sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(6, 6, 6, 6);
    auto *fileCaption = new QLabel(QStringLiteral("File:"), side);
    m_lbFileName = new QLabel(side);
    m_lbFileName->setObjectName(QStringLiteral("lbFileName"));
    m_lbFileName->setWordWrap(true);
    m_lbFileName->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_lvForms = new QListWidget(side);
    m_lvForms->setObjectName(QStringLiteral("lvFormNames"));
    m_lvCategories = new QListWidget(side);
    m_lvCategories->setObjectName(QStringLiteral("lvCategories"));
    m_cbNewCategory = new QComboBox(side);
    m_cbNewCategory->setObjectName(QStringLiteral("cbNewCategory"));
    auto *formsCaption = new QLabel(QStringLiteral("&Forms:"), side);
    formsCaption->setBuddy(m_lvForms);
    auto *categoriesCaption = new QLabel(QStringLiteral("C&ategories:"), side);
    categoriesCaption->setBuddy(m_lvCategories);
    sideLayout->addWidget(fileCaption);
    sideLayout->addWidget(m_lbFileName);
    sideLayout->addWidget(formsCaption);
    sideLayout->addWidget(m_lvForms, 2);
    sideLayout->addWidget(categoriesCaption);
    sideLayout->addWidget(m_lvCategories, 2);
    sideLayout->addWidget(m_cbNewCategory);

    m_editorArea = new QWidget(splitter);
    m_editorLayout = new QVBoxLayout(m_editorArea);
    m_editorLayout->setContentsMargins(0, 0, 0, 0);
    m_placeholder = new QLabel(m_editorArea);
    m_placeholder->setAlignment(Qt::AlignCenter);
    m_placeholder->setWordWrap(true);
    m_editorLayout->addWidget(m_placeholder);
    splitter->addWidget(side);
    splitter->addWidget(m_editorArea);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({220, 780});
    setCentralWidget(splitter);
    statusBar();

    connect(m_lvForms, &QListWidget::currentRowChanged, this, [this] { guarded([this] { selectionChanged(); }); });
    connect(m_lvCategories, &QListWidget::currentRowChanged, this,
            [this] { guarded([this] { selectionChanged(); }); });
    connect(m_cbNewCategory, qOverload<int>(&QComboBox::activated), this,
            [this](int index) { guarded([this, index] { newCategoryChosen(index); }); });
}

QChar TfrmFileEditor::tableDelimiter() const
{
    // The component's own delimiter must differ from the file's, or the
    // texts could not be told apart when saving.
    return m_info.delimiter == QLatin1Char('\t') ? QChar(char16_t(0x1F)) : QLatin1Char('\t');
}

QString TfrmFileEditor::currentForm() const
{
    const QListWidgetItem *item = m_lvForms->currentItem();
    return item ? item->text() : QString();
}

int TfrmFileEditor::currentCategory() const
{
    const QListWidgetItem *item = m_lvCategories->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : -1;
}

void TfrmFileEditor::fillLists()
{
    const bool wasUpdating = m_updatingLists;
    m_updatingLists = true;
    const QString form = currentForm();
    const int category = currentCategory();

    m_lvForms->clear();
    m_lvForms->addItems(m_info.forms);
    m_lvCategories->clear();
    m_cbNewCategory->clear();
    if (hasFile()) {
        m_cbNewCategory->addItem(QStringLiteral("Start a category..."), -1);
        for (int t = 0; t < StringsTypeCount; ++t) {
            const auto kind = TStringsType(t);
            const bool listed = m_info.categories.contains(kind) || m_started.contains(kind);
            if (m_locked ? kind == m_lockedKind : listed) {
                auto *item = new QListWidgetItem(TvxTranslationFileInfo::sectionName(kind), m_lvCategories);
                item->setData(Qt::UserRole, t);
            } else if (!listed) {
                m_cbNewCategory->addItem(TvxTranslationFileInfo::sectionName(kind), t);
            }
        }
    }
    m_cbNewCategory->setEnabled(hasFile() && !m_locked && m_cbNewCategory->count() > 1);
    m_lvCategories->setEnabled(!m_locked);

    const QList<QListWidgetItem *> forms = m_lvForms->findItems(form, Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_lvForms->setCurrentItem(forms.isEmpty() ? nullptr : forms.first());
    m_lvCategories->setCurrentItem(nullptr);
    for (int r = 0; r < m_lvCategories->count(); ++r) {
        if (m_lvCategories->item(r)->data(Qt::UserRole).toInt() == category)
            m_lvCategories->setCurrentRow(r);
    }
    m_updatingLists = wasUpdating;
}

void TfrmFileEditor::showFileState()
{
    if (!hasFile()) {
        setWindowTitle(AppTitle);
        m_lbFileName->setText(QStringLiteral("(none)"));
        m_placeholder->setText(QStringLiteral("Open a translation file with File > Open."));
        statusBar()->clearMessage();
        return;
    }
    const QString shown = QDir::toNativeSeparators(m_info.fileName);
    setWindowTitle(AppTitle + QStringLiteral(" - ") + shown);
    m_lbFileName->setText(shown);
    m_placeholder->setText(QStringLiteral("Pick a form and a category to edit their texts."));
    statusBar()->showMessage(QStringLiteral("%1 form(s), %2 categories, %3 language(s), delimiter \"%4\"")
                                 .arg(m_info.forms.size())
                                 .arg(m_info.categories.size())
                                 .arg(m_info.languageCount)
                                 .arg(m_info.delimiter));
}

bool TfrmFileEditor::openFile(const QString &fileName, QString *error)
{
    TvxTranslationFileInfo info;
    if (!info.read(fileName, error))
        return false;
    if (hasFile() && !closeFile()) {
        if (error)
            *error = QStringLiteral("The open file has changes that are not applied yet.");
        return false;
    }
    m_info = info;
    m_started.clear();
    m_locked = false;
    m_closeAfterEdit = false;
    fillLists();
    showFileState();
    // A file of one form needs no choice; the first category present is
    // where editing starts.
    if (m_info.forms.size() == 1)
        m_lvForms->setCurrentRow(0);
    if (!m_info.categories.isEmpty())
        m_lvCategories->setCurrentRow(0);
    return true;
}

bool TfrmFileEditor::closeFile()
{
    if (!hasFile())
        return true;
    if (!settleEditor())
        return false;
    discardEditor();
    m_info = TvxTranslationFileInfo();
    m_started.clear();
    m_locked = false;
    fillLists();
    showFileState();
    Q_EMIT fileClosed();
    return true;
}

bool TfrmFileEditor::selectCategory(TStringsType kind)
{
    if (!hasFile() || kind < 0 || kind >= StringsTypeCount)
        return false;
    if (m_locked && kind != m_lockedKind)
        return false;
    if (!m_info.categories.contains(kind) && !m_started.contains(kind)) {
        m_started << kind;
        fillLists();
    }
    for (int r = 0; r < m_lvCategories->count(); ++r) {
        if (m_lvCategories->item(r)->data(Qt::UserRole).toInt() == kind) {
            m_lvCategories->setCurrentRow(r);
            return currentCategory() == kind;
        }
    }
    return false;
}

bool TfrmFileEditor::selectForm(const QString &form)
{
    const QList<QListWidgetItem *> found = m_lvForms->findItems(form, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found.isEmpty())
        return false;
    m_lvForms->setCurrentItem(found.first());
    return currentForm() == form;
}

void TfrmFileEditor::setCategoryLocked(bool locked)
{
    const int category = currentCategory();
    m_locked = locked && category >= 0;
    if (m_locked)
        m_lockedKind = TStringsType(category);
    fillLists();
}

void TfrmFileEditor::newCategoryChosen(int index)
{
    const int kind = m_cbNewCategory->itemData(index).toInt();
    if (kind < 0)
        return;
    selectCategory(TStringsType(kind));
}

void TfrmFileEditor::selectionChanged()
{
    if (m_updatingLists)
        return;
    const QString form = currentForm();
    const int kind = currentCategory();
    if (m_editor && form == m_editedForm && kind == m_editedKind)
        return;
    if (!settleEditor()) {
        // The user kept the table being edited: so does the selection.
        m_updatingLists = true;
        selectForm(m_editedForm);
        for (int r = 0; r < m_lvCategories->count(); ++r) {
            if (m_lvCategories->item(r)->data(Qt::UserRole).toInt() == m_editedKind)
                m_lvCategories->setCurrentRow(r);
        }
        m_updatingLists = false;
        return;
    }
    discardEditor();
    if (!form.isEmpty() && kind >= 0)
        openEditor();
}

void TfrmFileEditor::openEditor()
{
    const QString form = currentForm();
    const auto kind = TStringsType(currentCategory());
    try {
        auto owner = std::make_unique<QWidget>();
        owner->setObjectName(form);
        auto *component = new TVexilTLV(owner.get());
        component->setObjectName(QStringLiteral("Vexil1"));
        component->Loaded();
        const QChar delim = tableDelimiter();
        component->SetLangDelim(delim);
        component->SetNumLang(m_info.languageCount);
        QStringList names = m_info.languageNames.mid(0, m_info.languageCount);
        for (int i = int(names.size()); i < m_info.languageCount; ++i)
            names << QStringLiteral("LANGUAGE N") + QString::number(i + 1);
        component->SetLangNames(names);

        // The form's entries, read as the grid editor's Load reads them.
        // That keeps every line of the section, whereas a component load
        // drops the lines of components its (empty) owner does not have.
        TvxGridModel lines;
        lines.build({}, delim, m_info.languageCount);
        QChar fileDelim = m_info.delimiter;
        const TvxCategoryFile::Target target{form, form, kind, TfrmRTEditor::categoryName(kind)};
        try {
            TvxCategoryFile::load(lines, target, m_info.fileName, fileDelim,
                                  [](const QString &) { return TvxCategoryFile::No; });
        } catch (const EVexilError &e) {
            if (e.message() != NoInformation)
                throw;
        }
        TvxStringList *table = component->GetPropListByType(kind);
        table->setLines(lines.lines(delim));

        auto *editor = new TfrmRTEditor(component, kind, table, m_editorArea);
        editor->setWindowFlags(Qt::Widget);
        editor->setWindowTitle(form + QStringLiteral(" - ") + TvxTranslationFileInfo::sectionName(kind));
        editor->installEventFilter(this);
        connect(editor, &QDialog::finished, this, [this, editor] {
            if (editor == m_editor && !m_settling)
                guarded([this] { editorFinished(); });
        });
        m_owner = std::move(owner);
        m_component = component;
        m_editor = editor;
        m_editedForm = form;
        m_editedKind = kind;
        m_baselineTaken = false;
        m_placeholder->hide();
        m_editorLayout->addWidget(editor);
        editor->show();
        // Shown inside a visible window, the grid is filled by now;
        // otherwise once the window is shown (see eventFilter).
        if (editor->isVisible())
            editorShown();
    } catch (const std::exception &e) {
        discardEditor();
        showError(QStringLiteral("The texts of %1 in %2 cannot be edited: %3")
                      .arg(form, TvxTranslationFileInfo::sectionName(kind), errorText(e)));
    }
}

bool TfrmFileEditor::eventFilter(QObject *watched, QEvent *event)
{
    // The type test comes first: an editor being destroyed sends events
    // while it is no longer a TfrmRTEditor, and reading the guarded
    // pointer then would cast it to one.
    if (event->type() == QEvent::Show && !m_baselineTaken && watched == m_editor) {
        // The editor fills its grid in its own handling of this event.
        QTimer::singleShot(0, this, [this, editor = m_editor] {
            if (editor && editor == m_editor && !m_baselineTaken)
                editorShown();
        });
    }
    return QMainWindow::eventFilter(watched, event);
}

void TfrmFileEditor::editorShown()
{
    // The columns carry the file's language names as the file spells them
    // (the editor would otherwise show the names of an earlier session).
    TvxGridModel *model = m_editor->model();
    for (int c = 1; c < model->columnCount() && c <= m_info.languageNames.size(); ++c)
        model->setHeader(c, m_info.languageNames.at(c - 1));
    // What the grid holds now is what unapplied changes are measured against.
    m_baseline = model->lines(tableDelimiter());
    m_baselineHeaders = model->languageHeaders();
    m_baselineTaken = true;
}

bool TfrmFileEditor::hasPendingChanges() const
{
    if (!m_editor || !m_baselineTaken || !m_editor->isVisible())
        return false;
    const TvxGridModel *model = m_editor->model();
    return model->lines(tableDelimiter()) != m_baseline || model->languageHeaders() != m_baselineHeaders;
}

void TfrmFileEditor::discardEditor()
{
    if (m_editor) {
        m_editor->removeEventFilter(this);
        m_editor->hide();
        m_editor->deleteLater();
    }
    m_editor = nullptr;
    // The component goes with its owner, after the editor that uses it.
    if (m_owner)
        m_owner.release()->deleteLater();
    m_component = nullptr;
    m_editedForm.clear();
    m_baselineTaken = false;
    m_placeholder->show();
}

bool TfrmFileEditor::settleEditor()
{
    if (!m_editor || !hasPendingChanges())
        return true;
    const int answer = m_component->MessageDlg(
        QStringLiteral("Apply the changes to %1 of %2?")
            .arg(TvxTranslationFileInfo::sectionName(m_editedKind), m_editedForm),
        mtConfirmation, TMsgDlgButtons(mbYes) | mbNo | mbCancel);
    if (answer == mrYes)
        return applyEditor();
    return answer == mrNo;
}

bool TfrmFileEditor::applyEditor()
{
    m_settling = true;
    m_editor->BitBtn1Click();
    m_settling = false;
    if (!saveTable()) {
        m_editor->show();
        return false;
    }
    return true;
}

bool TfrmFileEditor::saveTable()
{
    TvxStringList *table = m_component->GetPropListByType(m_editedKind);
    table->setLines(m_editor->result());
    try {
        if (m_component->SaveToFile(m_editedKind, m_info.fileName, m_info.delimiter) < 0)
            throw EVexilError(QStringLiteral("the file delimiter cannot be used"));
        removeDroppedEntries();
    } catch (const std::exception &e) {
        showError(QStringLiteral("The texts of %1 in %2 were not saved: %3")
                      .arg(m_editedForm, TvxTranslationFileInfo::sectionName(m_editedKind), errorText(e)));
        return false;
    }
    // The file may hold a new category (or no entries of a form) now.
    TvxTranslationFileInfo info;
    if (info.read(m_info.fileName, nullptr)) {
        m_info = info;
        m_started.removeAll(m_editedKind);
        if (!m_info.categories.contains(m_editedKind))
            m_started << m_editedKind;
    }
    return true;
}

void TfrmFileEditor::removeDroppedEntries()
{
    // Saving writes every line of the table; entries of the form that the
    // table no longer has (rows deleted in the grid) are removed here, in a
    // second write, so a save that was refused has changed nothing.
    const TvxStringList *table = m_component->GetPropListByType(m_editedKind);
    const QChar delim = tableDelimiter();
    const bool bracketed = m_editedKind == stCollections || m_editedKind == stListView_TreeView_Items;
    QSet<QString> kept;
    for (const QString &line : table->lines()) {
        const int d = line.indexOf(delim);
        QString name = d >= 0 ? line.left(d) : QString();
        if (bracketed)
            name.replace(QLatin1Char('['), QLatin1Char('-')).replace(QLatin1Char(']'), QLatin1Char('+'));
        kept.insert(name.toUpper());
    }
    TMemIniFile ini(m_info.fileName);
    const QString section = TvxCategoryFile::section(m_editedKind, TfrmRTEditor::categoryName(m_editedKind));
    QStringList keys;
    ini.ReadSection(section, keys);
    const QString prefix = m_editedForm + QLatin1Char('.');
    bool changed = false;
    for (const QString &key : std::as_const(keys)) {
        if (key.startsWith(prefix) && !kept.contains(key.mid(prefix.size()).toUpper())) {
            ini.DeleteKey(section, key);
            changed = true;
        }
    }
    // Language names are kept upper-cased in a component; a name the user
    // did not change keeps the spelling the file gave it.
    const QString names = QStringLiteral("Language names - for internal use only!");
    for (int i = 0; i < m_info.languageNames.size(); ++i) {
        const QString ident = QStringLiteral("Language_") + QString::number(i + 1);
        const QString given = m_info.languageNames.at(i);
        const QString now = ini.ReadString(names, ident, QString());
        if (now != given && now == given.toUpper()) {
            ini.WriteString(names, ident, given);
            changed = true;
        }
    }
    if (changed)
        ini.UpdateFile();
}

void TfrmFileEditor::editorFinished()
{
    if (m_editor->applied() && !saveTable()) {
        // Nothing of the edit is lost: the grid stays open with it.
        m_editor->show();
        return;
    }
    discardEditor();
    if (m_closeAfterEdit) {
        closeFile();
        hide();
        return;
    }
    fillLists();
    showFileState();
    // The table again as the file now holds it.
    if (!currentForm().isEmpty() && currentCategory() >= 0)
        openEditor();
}

void TfrmFileEditor::openClick()
{
    const QString fileName = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open translation file"), hasFile() ? QFileInfo(m_info.fileName).path() : QString(),
        QStringLiteral("Translation files (*.lng *.ini *.vxl);;All files (*)"), nullptr,
        QFileDialog::DontUseNativeDialog);
    if (fileName.isEmpty())
        return;
    QString error;
    if (!openFile(fileName, &error) && !error.isEmpty())
        showError(error);
}

void TfrmFileEditor::closeEvent(QCloseEvent *event)
{
    bool closed = false;
    guarded([this, &closed] { closed = closeFile(); });
    if (closed)
        event->accept();
    else
        event->ignore();
}

template<typename F>
void TfrmFileEditor::guarded(F &&command)
{
    // Nothing thrown may leave a Qt event handler: it becomes a message.
    try {
        command();
    } catch (const std::exception &e) {
        showError(errorText(e));
    } catch (...) {
        showError(QStringLiteral("The command failed."));
    }
}

void TfrmFileEditor::showError(const QString &message)
{
    QMessageBox::warning(this, AppTitle, message);
}
