#pragma once

#include "vxdesignertools_export.h"

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtGui/QIcon>
#include <QtGui/QKeySequence>
#include <QtDesigner/QDesignerFormEditorInterface>

#include <QtGui/QAction>
class QMenu;
class QMenuBar;
class QDesignerFormWindowInterface;
class TfrmVexil;

/// Tells the expert's main window about form windows that Designer adds,
/// removes and activates, for the expert's whole life.
class VEXIL_DESIGNER_EXPORT TvxAddInNotifier : public QObject
{
    Q_OBJECT
public:
    TvxAddInNotifier(QDesignerFormEditorInterface *core, QObject *parent);

    /// The window told about changes, or none. Module notifiers exist only
    /// while a window is attached; detaching deletes them.
    void attach(TfrmVexil *window);
    void detach();
    int moduleNotifierCount() const { return int(m_modules.size()); }

private:
    void formWindowAdded(QDesignerFormWindowInterface *formWindow);
    void formWindowRemoved(QDesignerFormWindowInterface *formWindow);
    void watch(QDesignerFormWindowInterface *formWindow);

    QPointer<QDesignerFormEditorInterface> m_core;
    QPointer<TfrmVexil> m_window;
    QHash<QDesignerFormWindowInterface *, QObject *> m_modules;
};

/// Tells the main window about one open form: its changes, its renames
/// (the top widget's object name) and its file name.
class VEXIL_DESIGNER_EXPORT TvxModuleNotifier : public QObject
{
    Q_OBJECT
public:
    TvxModuleNotifier(QDesignerFormWindowInterface *formWindow, TfrmVexil *window, QObject *parent);

private:
    void watchMainContainer(QWidget *mainContainer);
    void report();

    QPointer<QDesignerFormWindowInterface> m_formWindow;
    QPointer<TfrmVexil> m_window;
    QMetaObject::Connection m_nameConnection;
};

/// The add-in inside Designer: its settings, its menu item in Designer's
/// main menu and its main window. One expert per form editor.
class VEXIL_DESIGNER_EXPORT TVexilExpert : public QObject
{
    Q_OBJECT
public:
    /// The expert styles, in the environment's order.
    enum TExpertStyle { esStandard, esForm, esProject, esAddIn };
    enum TExpertStateFlag { esEnabled = 1, esChecked = 2 };
    Q_DECLARE_FLAGS(TExpertState, TExpertStateFlag)

    /// Sets the defaults, reads the settings, puts the menu item into
    /// Designer's menu and starts watching the form windows of @p core
    /// (which may be null: then there is no menu and nothing to watch).
    explicit TVexilExpert(QDesignerFormEditorInterface *core, QObject *parent = nullptr);
    ~TVexilExpert() override;

    /// The expert of the running form editor, or none.
    static TVexilExpert *instance();

    QDesignerFormEditorInterface *core() const { return m_core; }

    // Identity.
    QString GetName() const;
    QString GetAuthor() const;
    QString GetComment() const { return {}; }
    QString GetPage() const { return {}; }
    QString GetMenuText() const { return {}; }
    QIcon GetGlyph() const { return {}; }
    TExpertStyle GetStyle() const { return esAddIn; }
    TExpertState GetState() const { return {}; }
    QString GetIDString() const;
    void Execute() {}

    // Settings.
    int DefNumLang() const { return m_defNumLang; }
    QKeySequence ShortCut() const { return m_shortCut; }
    QString MenuSection() const { return m_menuSection; }
    QString UserFile() const { return m_userFile; }
    bool UseCustom() const { return m_useCustom; }
    bool OpenAllForms() const { return m_openAllForms; }
    QString DefaultComponent() const { return m_defaultComponent; }

    void SetNumLang(int value);
    void SetShortCut(const QKeySequence &value);
    void SetMenuSection(const QString &value);
    void SetOpenAllForms(bool value);
    void SetDefaultComp(const QString &value);
    void SetUseCustom(bool useCustom, const QString &userFile);
    void ReadSettings();

    /// The nine section names, in the options list's order.
    static QStringList menuSections();
    /// The title (without '&') of Designer's menu that a section names.
    static QString designerMenuFor(const QString &section);

    /// Puts the menu item under the menu MenuSection() names, at index 2.
    /// No menu bar or no such menu: no item.
    void Configure();
    /// Destroys the menu item, when there is one.
    void RemoveSettings();
    QAction *menuItem() const { return m_menuItem; }
    /// Designer's main menu bar: the top-level window's, else the menu bar of
    /// an application main window holding a "File" menu.
    QMenuBar *mainMenuBar() const;

    /// Shows the main window (made on first use).
    void RunItemClick();
    TfrmVexil *mainWindow() const;
    TvxAddInNotifier *notifier() const { return m_notifier; }
    /// Called by the main window as it closes: its notifiers go first.
    void windowClosing(TfrmVexil *window);

    /// Form windows the expert opened itself; they go with the expert.
    void adoptFormWindow(QDesignerFormWindowInterface *formWindow);

private:
    void writeValue(const QString &name, const QVariant &value);

    QPointer<QDesignerFormEditorInterface> m_core;
    QPointer<QAction> m_menuItem;
    TvxAddInNotifier *m_notifier = nullptr;
    int m_defNumLang = 2;
    QKeySequence m_shortCut;
    QString m_menuSection;
    QString m_userFile;
    bool m_useCustom = false;
    bool m_openAllForms = false;
    QString m_defaultComponent;
    QPointer<TfrmVexil> m_window;
    QList<QPointer<QDesignerFormWindowInterface>> m_ownForms;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TVexilExpert::TExpertState)
