#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QtDesigner/QDesignerFormEditorPluginInterface>
#include <QtCore/QPointer>
#include <QtGui/QIcon>

#include <functional>

/// One of the suite's components in Designer's widget box.
class TvxWidgetPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    struct Entry
    {
        QString className;   ///< the class, as uic writes it
        QString header;      ///< the suite's public header declaring it
        QString objectName;  ///< the first instance's name on a form
        QString toolTip;
        QString whatsThis;
        QIcon icon;
        bool nonVisual;      ///< hidden at run time, a small box in the designer
        std::function<QWidget *(QWidget *parent)> create;
    };

    TvxWidgetPlugin(Entry entry, QObject *parent);

    QString name() const override { return m_entry.className; }
    QString group() const override;
    QString toolTip() const override { return m_entry.toolTip; }
    QString whatsThis() const override { return m_entry.whatsThis; }
    QString includeFile() const override { return m_entry.header; }
    QIcon icon() const override { return m_entry.icon; }
    bool isContainer() const override { return false; }
    QString domXml() const override;
    QWidget *createWidget(QWidget *parent) override;
    bool isInitialized() const override { return m_core != nullptr; }
    void initialize(QDesignerFormEditorInterface *core) override;

private:
    Entry m_entry;
    QDesignerFormEditorInterface *m_core = nullptr;
};

#include "vxexpert.h"

/// The suite's components, in palette order, and the task-menu verbs of its
/// translation components. The same object is Designer's form-editor plugin
/// that starts the expert: a module holds one plugin object, and Designer
/// asks every loaded one for both interfaces.
class TvxDesignerCollection : public QObject,
                              public QDesignerCustomWidgetCollectionInterface,
                              public QDesignerFormEditorPluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface QDesignerFormEditorPluginInterface)
public:
    explicit TvxDesignerCollection(QObject *parent = nullptr);
    QList<QDesignerCustomWidgetInterface *> customWidgets() const override { return m_widgets; }

    // The form-editor plugin: the expert of @p core, made once.
    bool isInitialized() const override { return m_expert != nullptr; }
    void initialize(QDesignerFormEditorInterface *core) override;
    /// The expert brings its own menu item; Designer's edit-mode tools get
    /// no action from it.
    QAction *action() const override { return nullptr; }
    QDesignerFormEditorInterface *core() const override { return m_core; }

private:
    QList<QDesignerCustomWidgetInterface *> m_widgets;
    QDesignerFormEditorInterface *m_core = nullptr;
    QPointer<TVexilExpert> m_expert;
};
