#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
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

/// The suite's components, in palette order, and the task-menu verbs of its
/// translation components.
class TvxDesignerCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit TvxDesignerCollection(QObject *parent = nullptr);
    QList<QDesignerCustomWidgetInterface *> customWidgets() const override { return m_widgets; }

private:
    QList<QDesignerCustomWidgetInterface *> m_widgets;
};
