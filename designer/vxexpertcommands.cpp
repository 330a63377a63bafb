#include "vxexpertcommands.h"

#include "vxfoundform.h"
#include "vxprogresswindow.h"
#include "vxtranslunits.h"
#include "vxunusedwindow.h"

#include "vxcomp.h"
#include "vxuiedit.h"

#include <QtCore/QFileInfo>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtGui/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>

#include <exception>

using namespace Vexil::Expert;

namespace {

// The translation component on a form open in Designer.
TvxCustomLang *liveComponent(QDesignerFormWindowInterface *formWindow)
{
    QWidget *main = formWindow ? formWindow->mainContainer() : nullptr;
    return main ? main->findChild<TvxCustomLang *>() : nullptr;
}

} // namespace

TvxExpertCommands::TvxExpertCommands(TvxExpertProject *project, QObject *parent)
    : QObject(parent), m_project(project), m_progress(new TvxProgressWindow(project->window()))
{
}

TvxExpertCommands::~TvxExpertCommands()
{
    delete m_progress;
}

template <class F>
void TvxExpertCommands::guarded(F &&command)
{
    // Run from a menu: nothing may leave the event handler.
    try {
        command();
    } catch (const std::exception &e) {
        message(TvxMessageKind::Error, QString::fromLocal8Bit(e.what()));
    } catch (...) {
        message(TvxMessageKind::Error, QStringLiteral("The command failed."));
    }
    if (m_progress)
        m_progress->showText(QString());
    m_project->refresh();
}

void TvxExpertCommands::message(TvxMessageKind kind, const QString &text)
{
    if (m_progress)
        m_progress->showText(QString());
    const QString title = QStringLiteral("TVexil Expert");
    switch (kind) {
    case TvxMessageKind::Information: QMessageBox::information(m_project->window(), title, text); break;
    case TvxMessageKind::Warning: QMessageBox::warning(m_project->window(), title, text); break;
    case TvxMessageKind::Error: QMessageBox::critical(m_project->window(), title, text); break;
    }
}

bool TvxExpertCommands::componentOf(const QString &formName, Component *component) const
{
    *component = Component();
    if (TvxCustomLang *live = liveComponent(m_project->openFormWindow(formName))) {
        component->live = live;
        component->name = live->objectName();
        component->className = QString::fromLatin1(live->metaObject()->className());
        component->strings = live->Strings()->lines();
        component->delimiter = live->LangDelim();
        return true;
    }
    const TvxProjectForm form = m_project->form(formName);
    TvxUnitFile ui(form.uiPath);
    if (form.uiPath.isEmpty() || !ui.read())
        return false;
    component->name = uiTranslationComponent(ui.text(), &component->className);
    if (component->name.isEmpty())
        return false;
    // A closed form's table is split at the delimiter its .ui sets, the
    // tab when it sets none.
    component->delimiter = uiCharProperty(ui.text(), component->name, QStringLiteral("LangDelim"), QLatin1Char('\t'));
    component->strings = uiStringList(ui.text(), component->name, QStringLiteral("Strings"));
    return true;
}

bool TvxExpertCommands::addStrings(const QString &formName, const TvxStringEntries &entries)
{
    Component c;
    if (!componentOf(formName, &c))
        return false;
    const QStringList lines = addToStrings(c.strings, entries, c.delimiter);
    if (c.live) {
        QDesignerFormWindowInterface *formWindow = m_project->openFormWindow(formName);
        formWindow->cursor()->setWidgetProperty(c.live, QStringLiteral("Strings"), lines);
        formWindow->setDirty(true);
        return c.live->Strings()->lines() == lines;
    }
    QString error;
    if (!writeUiStrings(m_project->form(formName).uiPath, c.name, lines, &error)) {
        message(TvxMessageKind::Error, error);
        return false;
    }
    return true;
}

TvxScanOutcome TvxExpertCommands::DoScanReplace(const QString &formName, const QString &unitFile, bool constSection)
{
    const TvxProjectForm form = m_project->form(formName);
    Component c;
    if (form.formName.isEmpty() || !componentOf(formName, &c))
        return TvxScanOutcome::Failed;
    TvxScanInput in;
    in.formName = form.formName;
    in.formClassName = form.className;
    in.componentName = c.name;
    in.strings = c.strings;
    in.delimiter = c.delimiter;
    in.unitPath = unitFile.isEmpty() ? form.cppPath : unitFile;
    in.headerPath = form.hPath;
    in.formSourcePath = form.cppPath;
    in.constSection = constSection;
    in.formsOwnUnit = QFileInfo(in.unitPath) == QFileInfo(form.cppPath);

    TvxScanCallbacks cb;
    cb.review = [this](TvxFoundList &list) {
        TfrmFound found(&list, m_project->window());
        return found.exec() == QDialog::Accepted;
    };
    cb.addStrings = [this, formName](const TvxStringEntries &entries) { return addStrings(formName, entries); };
    cb.message = [this](TvxMessageKind kind, const QString &text) { message(kind, text); };
    cb.progress = [this](const QString &text) {
        if (m_progress)
            m_progress->showText(text);
    };
    return doScanReplace(in, cb);
}

void TvxExpertCommands::scanSelectedForms(bool constSection)
{
    guarded([this, constSection] {
        for (const QString &form : m_project->selectedForms()) {
            Component c;
            if (!componentOf(form, &c)) {
                // A component that cannot be inserted leaves the form as it
                // is; the scan then finds nothing to work with.
                try {
                    m_project->insertComponent(form);
                } catch (...) {
                }
            }
            DoScanReplace(form, QString(), constSection);
        }
    });
}

void TvxExpertCommands::Translatesource1Click()
{
    scanSelectedForms(false);
}

void TvxExpertCommands::Const1Click()
{
    scanSelectedForms(true);
}

bool TvxExpertCommands::pickUnit(QString *form, QString *unit)
{
    const QStringList forms = m_project->formsWithComponent();
    if (forms.isEmpty()) {
        message(TvxMessageKind::Error, Msg::noFormsWithVexil());
        return false;
    }
    TfrmTranslUnits picker(m_project->window());
    QStringList names;
    const QStringList files = m_project->units();
    for (const QString &file : files)
        names << QFileInfo(file).fileName();
    picker.setUnits(names, files);
    picker.setForms(forms);
    if (picker.exec() != QDialog::Accepted)
        return false;
    *form = picker.selectedForm();
    *unit = picker.selectedUnitFile();
    // A unit that is no longer there is passed over without a word.
    return !form->isEmpty() && !unit->isEmpty() && QFileInfo::exists(*unit);
}

void TvxExpertCommands::TranslateUnit1Click()
{
    guarded([this] {
        QString form, unit;
        if (pickUnit(&form, &unit))
            DoScanReplace(form, unit, false);
    });
}

void TvxExpertCommands::WithoutForm1Click()
{
    guarded([this] {
        QString form, unit;
        if (pickUnit(&form, &unit))
            DoScanReplace(form, unit, true);
    });
}

void TvxExpertCommands::CheckunusedIDs1Click()
{
    guarded([this] {
        const QStringList selected = m_project->selectedForms();
        if (selected.isEmpty())
            return;
        const QString name = selected.first();
        Component c;
        if (!componentOf(name, &c)) {
            message(TvxMessageKind::Error, Msg::formNotTranslated().arg(name));
            return;
        }
        QStringList unused;
        QString error;
        if (!checkUnusedIds(m_project->form(name).cppPath, c.strings, c.delimiter, &unused, &error)) {
            message(TvxMessageKind::Error, error);
            return;
        }
        if (unused.isEmpty()) {
            message(TvxMessageKind::Information, Msg::allIdsUsed().arg(name));
            return;
        }
        TvxUnusedIdsWindow *window = TvxUnusedIdsWindow::instance(m_project->window());
        window->setIdentifiers(unused);
        window->show();
        window->raise();
    });
}

void TvxExpertCommands::ToTVexil1Click(int index)
{
    guarded([this, index] {
        const QStringList selected = m_project->selectedForms();
        if (selected.isEmpty() || index < 0 || index >= componentClassNames().size())
            return;
        const QString name = selected.first();
        if (m_project->openFormWindow(name)) {
            message(TvxMessageKind::Warning, Msg::fileShouldBeClosed());
            return;
        }
        Component c;
        if (!componentOf(name, &c)) {
            message(TvxMessageKind::Error, Msg::formNotTranslated().arg(name));
            return;
        }
        const TvxProjectForm form = m_project->form(name);
        QString error;
        if (!changeComponentType(form.uiPath, {form.hPath, form.cppPath}, c.name,
                                 componentClassNames().at(index), &error))
            message(TvxMessageKind::Error, error);
    });
}

void buildExpertMenus(QMenuBar *bar, TvxExpertCommands *commands)
{
    auto item = [commands](QMenu *menu, const char *name, const char *text, void (TvxExpertCommands::*slot)()) {
        QAction *a = menu->addAction(QString::fromLatin1(text));
        a->setObjectName(QString::fromLatin1(name));
        QObject::connect(a, &QAction::triggered, commands, slot);
        return a;
    };
    QMenu *source = bar->addMenu(QStringLiteral("&Source"));
    source->setObjectName(QStringLiteral("Source1"));
    item(source, "Translatesource1", "&With form...", &TvxExpertCommands::Translatesource1Click);
    item(source, "TranslateUnit1", "W&ithout form...", &TvxExpertCommands::TranslateUnit1Click);

    QMenu *constSection = bar->addMenu(QStringLiteral("&Const section"));
    constSection->setObjectName(QStringLiteral("Constsection1"));
    item(constSection, "Const1", "With &Form...", &TvxExpertCommands::Const1Click);
    item(constSection, "WithoutForm1", "With&out Form...", &TvxExpertCommands::WithoutForm1Click);

    QMenu *tools = bar->addMenu(QStringLiteral("&Tools"));
    tools->setObjectName(QStringLiteral("Tools1"));
    item(tools, "CheckunusedIDs1", "&Check unused IDs", &TvxExpertCommands::CheckunusedIDs1Click);
    QMenu *type = tools->addMenu(QStringLiteral("Change &TVexil type"));
    type->setObjectName(QStringLiteral("ChangeTVexiltype1"));
    const QStringList &classes = componentClassNames();
    for (int i = 0; i < classes.size(); ++i) {
        QAction *a = type->addAction(QStringLiteral("&%1. To  %2").arg(i + 1).arg(classes.at(i)));
        a->setObjectName(QStringLiteral("ToTVexil%1").arg(i + 1));
        QObject::connect(a, &QAction::triggered, commands, [commands, i] { commands->ToTVexil1Click(i); });
    }
}
