#include "mainwindow.h"

#include "secondwindow.h"
#include "vxdialog.h"
#include "vxdispatcher.h"
#include "vxerrors.h"
#include "vxmsgdialog.h"
#include "vxrteditor.h"

#include <QtGui/QCloseEvent>

#include <QtGui/QActionGroup>
#include <QtWidgets/QMessageBox>

MainWindow::MainWindow(const QString &translations, QWidget *parent)
    : QMainWindow(parent)
    , m_translations(translations)
{
    ui.setupUi(this);
    m_second = new SecondWindow(this);

    // Tables come from the shared translation file; loading happens before
    // the dispatcher pushes its language so that both windows switch at once.
    ui.vexil->setStorageFile(m_translations);
    ui.vexil->setStorageDelimiter(QLatin1Char('^')); // the shared file's own delimiter
    ui.vexil->Loaded();
    m_second->vexil()->Loaded();
    ui.vexil->LoadAllFromFileDNC(m_translations, true);
    m_second->vexil()->LoadAllFromFileDNC(m_translations, true);

    m_dispatcher = new TVexilDispatcher(this);
    m_dispatcher->SetLangNames(ui.vexil->LangNames()->lines());
    ui.vexil->SetLangDispatcher(m_dispatcher);
    m_second->vexil()->SetLangDispatcher(m_dispatcher);
    ui.vexil->OnChangeLanguage = [this](TvxCustomLang *) { languageChanged(); };

    buildLanguageMenu();
    connect(ui.btnSecond, &QPushButton::clicked, m_second, &QWidget::show);
    connect(ui.btnClose, &QPushButton::clicked, this, &QWidget::close);
    connect(ui.actionExit, &QAction::triggered, this, &QWidget::close);
    connect(ui.actionSaveTranslations, &QAction::triggered, this, &MainWindow::saveTranslations);
    connect(ui.actionOpen, &QAction::triggered, this, &MainWindow::openFile);
    connect(ui.actionEditTranslations, &QAction::triggered, this, &MainWindow::editTranslations);
    connect(ui.btnApply, &QPushButton::clicked, this, [this] {
        statusBar()->showMessage(ui.vexil->GetText(QStringLiteral("IDS_SAVED")), 3000);
    });
    ui.vexil->ChangeLanguage();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildLanguageMenu()
{
    m_languages = new QActionGroup(this);
    const QStringList names = ui.vexil->LangNames()->lines();
    for (int i = 0; i < names.size(); ++i) {
        // Language names are shown as each language writes its own name.
        QString name = names.at(i).toLower();
        name[0] = name.at(0).toUpper();
        QAction *action = ui.menuLanguage->addAction(name);
        action->setCheckable(true);
        action->setChecked(i + 1 == ui.vexil->ActiveLanguage());
        m_languages->addAction(action);
        connect(action, &QAction::triggered, this, [this, i] { setLanguage(i + 1); });
    }
    ui.menuLanguage->addSeparator();
    ui.menuLanguage->addAction(ui.actionEditTranslations);
}

void MainWindow::setLanguage(int number)
{
    try {
        m_dispatcher->SetActiveLanguage(number);
    } catch (const EVexilError &e) {
        QMessageBox::warning(this, windowTitle(), e.message());
    }
}

void MainWindow::languageChanged()
{
    const int active = ui.vexil->ActiveLanguage();
    const QList<QAction *> actions = m_languages ? m_languages->actions() : QList<QAction *>();
    if (active >= 1 && active <= actions.size())
        actions.at(active - 1)->setChecked(true);
    const QString language = active >= 1 && active <= actions.size() ? actions.at(active - 1)->text() : QString();
    statusBar()->showMessage(ui.vexil->GetText(QStringLiteral("IDS_READY")).arg(language));
}

QDialog *MainWindow::createExitConfirmation() const
{
    return ui.vexil->CreateMessageDialog(ui.vexil->GetText(QStringLiteral("IDS_CONFIRM_EXIT")), mtConfirmation,
                                         mbYes | mbNo);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_confirmExit
        && ui.vexil->MessageDlg(ui.vexil->GetText(QStringLiteral("IDS_CONFIRM_EXIT")), mtConfirmation, mbYes | mbNo)
            != mrYes) {
        event->ignore();
        return;
    }
    m_second->close();
    event->accept();
}

void MainWindow::openFile()
{
    TvxOpenDialog dialog(this);
    dialog.SetVexil(ui.vexil);
    dialog.setNameFilters({ui.vexil->GetText(QStringLiteral("IDS_FILTER_CUSTOMERS")) + QStringLiteral(" (*.csv *.txt)")});
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        statusBar()->showMessage(dialog.selectedFiles().first(), 5000);
}

void MainWindow::saveTranslations()
{
    try {
        ui.vexil->SaveAllToFile(m_translations, QLatin1Char('^'));
        m_second->vexil()->SaveAllToFile(m_translations, QLatin1Char('^'));
        statusBar()->showMessage(ui.vexil->GetText(QStringLiteral("IDS_TRANSLATIONS_SAVED")), 3000);
    } catch (const std::exception &e) {
        QMessageBox::warning(this, windowTitle(), QString::fromLocal8Bit(e.what()));
    }
}

void MainWindow::editTranslations()
{
    // The end user's editor on this window's captions; Apply switches the
    // window to the edited texts at once.
    try {
        // Applied texts go straight back to the storage file beside the program.
        ui.vexil->EditProperty(stCaptions);
    } catch (const std::exception &e) {
        QMessageBox::warning(this, windowTitle(), QString::fromLocal8Bit(e.what()));
    }
}
