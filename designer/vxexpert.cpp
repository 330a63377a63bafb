#include "vxexpert.h"

#include "vxexpertwindow.h"
#include "vxsettings.h"

#include <QtCore/QTimer>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>

#include <exception>

namespace {

QPointer<TVexilExpert> theExpert;

std::unique_ptr<QSettings> expertKey()
{
    return Vexil::openSettingsKey(Vexil::toolsKeyPath());
}

QString plainTitle(QString title)
{
    return title.remove(QLatin1Char('&')).trimmed();
}

// A boolean as the settings hold it: true/false (or 1/0); anything else is
// no boolean.
bool readBool(const QVariant &value, bool *ok)
{
    if (value.typeId() == QMetaType::Bool) {
        *ok = true;
        return value.toBool();
    }
    const QString text = value.toString().trimmed().toLower();
    *ok = text == QLatin1String("true") || text == QLatin1String("false") || text == QLatin1String("1")
          || text == QLatin1String("0");
    return text == QLatin1String("true") || text == QLatin1String("1");
}

// Runs a notifier's work from Designer's signals: an error is shown, never
// thrown back into Designer.
template <class F>
void guarded(F &&work)
{
    try {
        work();
    } catch (const std::exception &error) {
        QMessageBox::warning(nullptr, QStringLiteral("TVexil Expert"), QString::fromLocal8Bit(error.what()));
    } catch (...) {
        QMessageBox::warning(nullptr, QStringLiteral("TVexil Expert"), QStringLiteral("Unexpected error."));
    }
}

} // namespace

// ---------------------------------------------------------------- notifiers

TvxAddInNotifier::TvxAddInNotifier(QDesignerFormEditorInterface *core, QObject *parent)
    : QObject(parent), m_core(core)
{
    if (!core || !core->formWindowManager())
        return;
    QDesignerFormWindowManagerInterface *manager = core->formWindowManager();
    connect(manager, &QDesignerFormWindowManagerInterface::formWindowAdded, this, &TvxAddInNotifier::formWindowAdded);
    connect(manager, &QDesignerFormWindowManagerInterface::formWindowRemoved, this,
            &TvxAddInNotifier::formWindowRemoved);
    connect(manager, &QDesignerFormWindowManagerInterface::activeFormWindowChanged, this,
            [this](QDesignerFormWindowInterface *formWindow) {
                guarded([&] {
                    if (m_window)
                        m_window->activeFormChanged(formWindow);
                });
            });
}

void TvxAddInNotifier::attach(TfrmVexil *window)
{
    detach();
    m_window = window;
    if (!window || !m_core || !m_core->formWindowManager())
        return;
    QDesignerFormWindowManagerInterface *manager = m_core->formWindowManager();
    for (int i = 0; i < manager->formWindowCount(); ++i)
        watch(manager->formWindow(i));
}

void TvxAddInNotifier::detach()
{
    const auto modules = m_modules;
    m_modules.clear();
    qDeleteAll(modules);
    m_window = nullptr;
}

void TvxAddInNotifier::watch(QDesignerFormWindowInterface *formWindow)
{
    if (!formWindow || !m_window || m_modules.contains(formWindow))
        return;
    auto *module = new TvxModuleNotifier(formWindow, m_window, this);
    m_modules.insert(formWindow, module);
    // A form window deleted without being removed from the manager first.
    connect(formWindow, &QObject::destroyed, module, [this, formWindow] {
        if (QObject *gone = m_modules.take(formWindow))
            gone->deleteLater();
        guarded([&] {
            if (m_window)
                m_window->formWindowGone(formWindow);
        });
    });
}

void TvxAddInNotifier::formWindowAdded(QDesignerFormWindowInterface *formWindow)
{
    if (!m_window)
        return;
    watch(formWindow);
    guarded([&] { m_window->formWindowChanged(formWindow); });
}

void TvxAddInNotifier::formWindowRemoved(QDesignerFormWindowInterface *formWindow)
{
    delete m_modules.take(formWindow);
    guarded([&] {
        if (m_window)
            m_window->formWindowGone(formWindow);
    });
}

TvxModuleNotifier::TvxModuleNotifier(QDesignerFormWindowInterface *formWindow, TfrmVexil *window, QObject *parent)
    : QObject(parent), m_formWindow(formWindow), m_window(window)
{
    connect(formWindow, &QDesignerFormWindowInterface::changed, this, &TvxModuleNotifier::report);
    connect(formWindow, &QDesignerFormWindowInterface::fileNameChanged, this, &TvxModuleNotifier::report);
    connect(formWindow, &QDesignerFormWindowInterface::mainContainerChanged, this, [this](QWidget *main) {
        watchMainContainer(main);
        report();
    });
    // Components added or removed change the translation state too.
    connect(formWindow, &QDesignerFormWindowInterface::widgetManaged, this, &TvxModuleNotifier::report);
    connect(formWindow, &QDesignerFormWindowInterface::widgetUnmanaged, this, &TvxModuleNotifier::report);
    watchMainContainer(formWindow->mainContainer());
}

void TvxModuleNotifier::watchMainContainer(QWidget *mainContainer)
{
    disconnect(m_nameConnection);
    if (mainContainer)
        m_nameConnection = connect(mainContainer, &QObject::objectNameChanged, this, &TvxModuleNotifier::report);
}

void TvxModuleNotifier::report()
{
    guarded([this] {
        if (m_window && m_formWindow)
            m_window->formWindowChanged(m_formWindow);
    });
}

// ---------------------------------------------------------------- expert

TVexilExpert::TVexilExpert(QDesignerFormEditorInterface *core, QObject *parent) : QObject(parent), m_core(core)
{
    m_defNumLang = 2;
    m_shortCut = QKeySequence::fromString(QStringLiteral("CTRL+L"), QKeySequence::PortableText);
    m_menuSection = QStringLiteral("ToolsMenu");
    m_useCustom = false;
    m_openAllForms = false;
    m_defaultComponent = QStringLiteral("TVexil");
    ReadSettings();
    Configure();
    m_notifier = new TvxAddInNotifier(core, this);
    if (core && !theExpert)
        theExpert = this;
}

TVexilExpert::~TVexilExpert()
{
    // The window and its notifiers first, then the menu item, then the
    // form windows the expert opened.
    if (m_window) {
        m_notifier->detach();
        delete m_window;
    }
    RemoveSettings();
    QDesignerFormWindowManagerInterface *manager = m_core ? m_core->formWindowManager() : nullptr;
    for (const auto &formWindow : std::as_const(m_ownForms)) {
        if (!formWindow)
            continue;
        if (manager)
            manager->removeFormWindow(formWindow);
        delete formWindow.data();
    }
}

TVexilExpert *TVexilExpert::instance()
{
    return theExpert;
}

QString TVexilExpert::GetName() const
{
    return QStringLiteral("TVexil Expert for Qt Designer");
}

QString TVexilExpert::GetAuthor() const
{
    return QStringLiteral("Kestrava");
}

QString TVexilExpert::GetIDString() const
{
    return QStringLiteral("Delphi3.VexilAddInExpert");
}

void TVexilExpert::writeValue(const QString &name, const QVariant &value)
{
    // A fresh settings object per write, closed at once.
    auto settings = expertKey();
    settings->setValue(name, value);
    settings->sync();
}

void TVexilExpert::SetNumLang(int value)
{
    if (value == m_defNumLang)
        return;
    m_defNumLang = value;
    writeValue(QStringLiteral("DefNumLang"), value);
}

void TVexilExpert::SetShortCut(const QKeySequence &value)
{
    if (value == m_shortCut)
        return;
    m_shortCut = value;
    writeValue(QStringLiteral("ShortCut"), value.toString(QKeySequence::PortableText));
}

void TVexilExpert::SetMenuSection(const QString &value)
{
    if (value == m_menuSection)
        return;
    m_menuSection = value;
    writeValue(QStringLiteral("MenuSection"), value);
}

void TVexilExpert::SetOpenAllForms(bool value)
{
    if (value == m_openAllForms)
        return;
    m_openAllForms = value;
    // Kept as it always was: the value written is UseCustom's, so the
    // setting reads back off unless UseCustom is on.
    writeValue(QStringLiteral("OpenAllForms"), m_useCustom);
}

void TVexilExpert::SetDefaultComp(const QString &value)
{
    if (value == m_defaultComponent)
        return;
    m_defaultComponent = value;
    writeValue(QStringLiteral("DefaultComponent"), value);
}

void TVexilExpert::SetUseCustom(bool useCustom, const QString &userFile)
{
    if (useCustom == m_useCustom && userFile == m_userFile)
        return;
    m_useCustom = useCustom;
    m_userFile = userFile;
    auto settings = expertKey();
    settings->setValue(QStringLiteral("UseCustom"), useCustom);
    settings->setValue(QStringLiteral("UserFile"), userFile);
    settings->sync();
}

void TVexilExpert::ReadSettings()
{
    try {
        auto settings = expertKey();
        const QString section = settings->value(QStringLiteral("MenuSection")).toString();
        if (!section.isEmpty())
            m_menuSection = section;
        const QString shortCut = settings->value(QStringLiteral("ShortCut")).toString();
        if (!shortCut.isEmpty())
            m_shortCut = QKeySequence::fromString(shortCut, QKeySequence::PortableText);
        // A missing or malformed number or switch ends the reading: what
        // follows keeps its default.
        bool ok = false;
        const int numLang = settings->value(QStringLiteral("DefNumLang")).toString().trimmed().toInt(&ok);
        if (!ok)
            return;
        m_defNumLang = numLang;
        const QVariant openAll = settings->value(QStringLiteral("OpenAllForms"));
        const bool openAllForms = readBool(openAll, &ok);
        if (!openAll.isValid() || !ok)
            return;
        m_openAllForms = openAllForms;
        const QString component = settings->value(QStringLiteral("DefaultComponent")).toString();
        if (!component.isEmpty())
            m_defaultComponent = component;
    } catch (...) {
        // Reading settings never stops the expert from starting.
    }
}

QStringList TVexilExpert::menuSections()
{
    return {QStringLiteral("FileMenu"),    QStringLiteral("EditMenu"),      QStringLiteral("SearchMenu"),
            QStringLiteral("ViewsMenu"),   QStringLiteral("ProjectMenu"),   QStringLiteral("RunMenu"),
            QStringLiteral("ComponentMenu"), QStringLiteral("ToolsMenu"),   QStringLiteral("HelpMenu")};
}

QString TVexilExpert::designerMenuFor(const QString &section)
{
    // Designer's main menu: File, Edit, Form, View, Settings, Window, Help.
    static const QHash<QString, QString> map{
        {QStringLiteral("FileMenu"), QStringLiteral("File")},
        {QStringLiteral("EditMenu"), QStringLiteral("Edit")},
        {QStringLiteral("SearchMenu"), QStringLiteral("Edit")},
        {QStringLiteral("ViewsMenu"), QStringLiteral("View")},
        {QStringLiteral("ProjectMenu"), QStringLiteral("Form")},
        {QStringLiteral("RunMenu"), QStringLiteral("Form")},
        {QStringLiteral("ComponentMenu"), QStringLiteral("Window")},
        {QStringLiteral("ToolsMenu"), QStringLiteral("Settings")},
        {QStringLiteral("HelpMenu"), QStringLiteral("Help")},
    };
    return map.value(section);
}

QMenuBar *TVexilExpert::mainMenuBar() const
{
    const auto barOf = [](QWidget *window) -> QMenuBar * {
        if (!window)
            return nullptr;
        if (auto *main = qobject_cast<QMainWindow *>(window)) {
            if (auto *bar = qobject_cast<QMenuBar *>(main->menuWidget()))
                return bar;
        }
        return window->findChild<QMenuBar *>(QString(), Qt::FindDirectChildrenOnly);
    };
    // Without Designer there is no menu to join.
    if (!m_core)
        return nullptr;
    if (QMenuBar *bar = barOf(m_core->topLevel()))
        return bar;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        QMenuBar *bar = barOf(window);
        if (!bar || (m_window && window == m_window))
            continue;
        for (QAction *action : bar->actions()) {
            if (action->menu() && plainTitle(action->text()) == QLatin1String("File"))
                return bar;
        }
    }
    return nullptr;
}

void TVexilExpert::Configure()
{
    QMenuBar *bar = mainMenuBar();
    if (!bar)
        return;
    const QString title = designerMenuFor(m_menuSection);
    QMenu *section = nullptr;
    for (QAction *action : bar->actions()) {
        if (action->menu() && !title.isEmpty() && plainTitle(action->text()).compare(title, Qt::CaseInsensitive) == 0) {
            section = action->menu();
            break;
        }
    }
    if (!section)
        return;
    RemoveSettings();
    auto *item = new QAction(QStringLiteral("T&Vexil Expert"), section);
    item->setObjectName(QStringLiteral("VexilExpertMenuItem"));
    item->setShortcut(m_shortCut);
    item->setShortcutContext(Qt::ApplicationShortcut);
    item->setEnabled(true);
    item->setVisible(true);
    connect(item, &QAction::triggered, this, &TVexilExpert::RunItemClick);
    const QList<QAction *> actions = section->actions();
    section->insertAction(actions.value(2, nullptr), item);
    m_menuItem = item;
}

void TVexilExpert::RemoveSettings()
{
    delete m_menuItem.data();
    m_menuItem = nullptr;
}

void TVexilExpert::RunItemClick()
{
    // Runs from a menu click: nothing may be thrown back into Designer.
    try {
        if (!m_window) {
            m_window = new TfrmVexil(this);
            m_notifier->attach(m_window);
            m_window->startUp();
        } else if (!m_window->isVisible()) {
            // Closed before: its notifiers went with it.
            m_notifier->attach(m_window);
            m_window->RefreshList();
        }
        m_window->show();
        // Docked: the dock may have been closed with its own button.
        if (auto *dock = qobject_cast<QDockWidget *>(m_window->parentWidget())) {
            dock->show();
            dock->raise();
        }
        m_window->raise();
        m_window->activateWindow();
    } catch (const std::exception &error) {
        QMessageBox::warning(nullptr, GetName(), QString::fromLocal8Bit(error.what()));
    } catch (...) {
        QMessageBox::warning(nullptr, GetName(), QStringLiteral("The expert's window could not be opened."));
    }
}

void TVexilExpert::windowClosing(TfrmVexil *window)
{
    if (window == m_window)
        m_notifier->detach();
}

void TVexilExpert::adoptFormWindow(QDesignerFormWindowInterface *formWindow)
{
    m_ownForms << formWindow;
}

TfrmVexil *TVexilExpert::mainWindow() const
{
    return m_window;
}
