#pragma once

// A real Designer form editor in the test process, with the suite's plugin
// loaded from the build tree as Designer loads it, and form windows opened
// from .ui text.
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormEditorPluginInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtGui/QUndoStack>

class DesignerCore
{
public:
    DesignerCore()
    {
        // Designer looks for plugins in the "designer" folder of every
        // library path: the build tree's holds ours.
        QCoreApplication::addLibraryPath(QStringLiteral(VEXIL_PLUGIN_DIR));
        owner = new QObject;
        core = QDesignerComponents::createFormEditor(owner);
        taskMenu = QDesignerComponents::createTaskMenu(core, owner);
        integration = new QDesignerIntegration(core, owner);
        QDesignerComponents::initializePlugins(core);
    }

    ~DesignerCore()
    {
        closeForms();
        // Designer's pieces go before the core they use.
        delete integration;
        delete taskMenu;
        delete core;
        delete owner;
    }

    /// Starts the form-editor plugins, as Designer's workbench does once its
    /// main window is up.
    void initializeFormEditorPlugins()
    {
        for (QObject *plugin : core->pluginInstances()) {
            if (auto *formEditorPlugin = qobject_cast<QDesignerFormEditorPluginInterface *>(plugin)) {
                if (!formEditorPlugin->isInitialized())
                    formEditorPlugin->initialize(core);
            }
        }
    }

    /// A form window holding @p ui, active, clean and with an empty history.
    QDesignerFormWindowInterface *openForm(const QString &ui, const QString &fileName = QString())
    {
        QDesignerFormWindowManagerInterface *manager = core->formWindowManager();
        QDesignerFormWindowInterface *form = manager->createFormWindow(nullptr);
        manager->addFormWindow(form);
        forms << form;
        if (!fileName.isEmpty())
            form->setFileName(fileName);
        if (!form->setContents(ui))
            return nullptr;
        manager->setActiveFormWindow(form);
        form->setDirty(false);
        form->commandHistory()->clear();
        return form;
    }

    void closeForm(QDesignerFormWindowInterface *form)
    {
        forms.removeAll(form);
        core->formWindowManager()->removeFormWindow(form);
        delete form;
    }

    /// Closes the forms this helper opened.
    void closeForms()
    {
        while (!forms.isEmpty())
            closeForm(forms.last());
    }

    QObject *owner = nullptr;
    QDesignerFormEditorInterface *core = nullptr;
    QObject *taskMenu = nullptr;
    QObject *integration = nullptr;
    QList<QDesignerFormWindowInterface *> forms;
};
