#include "vxdesignerplugin.h"

#include "vxdesignericons.h"
#include "vxexpert.h"
#include "vxtaskmenu.h"

#include "vxcomp.h"
#include "vxdispatcher.h"
#include "vxerrors.h"
#include "vxformstorage.h"
#include "vxlabel.h"
#include "vxvexillinked.h"
#include "vxvexilrt.h"
#include "vxvexilrtse.h"
#include "vxvexiltlv.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QExtensionManager>
#include <QtCore/QTimer>
#include <QtWidgets/QMessageBox>

namespace {

// The top widget of the designed form that @p parent lies in: a translation
// component created there translates that form, not Designer's window.
QWidget *designedForm(QWidget *parent)
{
    QDesignerFormWindowInterface *formWindow = QDesignerFormWindowInterface::findFormWindow(parent);
    if (!formWindow)
        return nullptr;
    if (QWidget *main = formWindow->mainContainer()) {
        if (main == parent || main->isAncestorOf(parent))
            return main;
    }
    // While a form is being read the main container is not set yet: it is
    // the topmost widget under the form window's own frame.
    QWidget *top = parent;
    while (top->parentWidget() && top->parentWidget() != formWindow
           && top->parentWidget() != formWindow->formContainer())
        top = top->parentWidget();
    return top;
}

template <class T>
QWidget *createTranslationComponent(QWidget *parent, const QIcon &icon)
{
    if (parent) {
        if (QWidget *form = designedForm(parent))
            TvxCustomLang::markDesignedForm(form);
    }
    try {
        auto *component = new T(parent);
        component->setDesigning(true);
        VexilDesigner::showInDesigner(component, icon);
        return component;
    } catch (const EVexilError &error) {
        // A form holds one translation component: Designer still needs a
        // widget, so it gets an empty one, and the user is told why.
        auto *placeholder = new QWidget(parent);
        QMessageBox::warning(parent ? parent->window() : nullptr, QString::fromLatin1(T::staticMetaObject.className()),
                             error.message());
        return placeholder;
    } catch (const std::exception &error) {
        auto *placeholder = new QWidget(parent);
        QMessageBox::warning(parent ? parent->window() : nullptr, QString::fromLatin1(T::staticMetaObject.className()),
                             QString::fromLocal8Bit(error.what()));
        return placeholder;
    }
}

QWidget *createDispatcher(QWidget *parent, const QIcon &icon)
{
    auto *dispatcher = new TVexilDispatcher(parent);
    VexilDesigner::showInDesigner(dispatcher, icon);
    return dispatcher;
}

QWidget *createFormStorage(QWidget *parent, const QIcon &icon)
{
    // The store keeps the placement of its parent's window and wants one;
    // Designer also builds a parentless instance to learn the defaults.
    QWidget *holder = parent ? nullptr : new QWidget;
    auto *storage = new TvxFormStorage(parent ? parent : holder);
    if (holder) {
        storage->setParent(nullptr);
        QObject::connect(storage, &QObject::destroyed, holder, &QObject::deleteLater);
    }
    storage->setDesigning(true);
    VexilDesigner::showInDesigner(storage, icon);
    return storage;
}

TvxWidgetPlugin::Entry entry(const char *className, const char *header, const char *objectName, const QString &tip,
                             const QIcon &icon, bool nonVisual,
                             QWidget *(*create)(QWidget *, const QIcon &))
{
    TvxWidgetPlugin::Entry e;
    e.className = QString::fromLatin1(className);
    e.header = QString::fromLatin1(header);
    e.objectName = QString::fromLatin1(objectName);
    e.toolTip = tip;
    e.whatsThis = tip;
    e.icon = icon;
    e.nonVisual = nonVisual;
    e.create = [create, icon](QWidget *parent) { return create(parent, icon); };
    return e;
}

QWidget *createLabel(QWidget *parent, const QIcon &)
{
    return new TvxLabel(parent);
}

} // namespace

TvxWidgetPlugin::TvxWidgetPlugin(Entry entry, QObject *parent) : QObject(parent), m_entry(std::move(entry)) {}

QString TvxWidgetPlugin::group() const
{
    return QStringLiteral("Kestrava");
}

QString TvxWidgetPlugin::domXml() const
{
    QString xml = QStringLiteral("<ui language=\"c++\">\n <widget class=\"%1\" name=\"%2\">\n").arg(m_entry.className,
                                                                                                   m_entry.objectName);
    if (m_entry.nonVisual)
        xml += QStringLiteral("  <property name=\"geometry\">\n   <rect><x>0</x><y>0</y><width>28</width>"
                              "<height>28</height></rect>\n  </property>\n");
    xml += QStringLiteral(" </widget>\n</ui>\n");
    return xml;
}

QWidget *TvxWidgetPlugin::createWidget(QWidget *parent)
{
    // Nothing may be thrown back into Designer.
    try {
        return m_entry.create(parent);
    } catch (...) {
        return new QWidget(parent);
    }
}

void TvxWidgetPlugin::initialize(QDesignerFormEditorInterface *core)
{
    if (m_core)
        return;
    m_core = core;
    // The verbs belong to every translation component; one registration
    // per form editor serves all classes.
    static const char registeredKey[] = "_q_vexilTaskMenuRegistered";
    if (QExtensionManager *manager = core->extensionManager()) {
        if (!manager->property(registeredKey).toBool()) {
            manager->setProperty(registeredKey, true);
            manager->registerExtensions(new TvxTaskMenuFactory(manager), Q_TYPEID(QDesignerTaskMenuExtension));
        }
    }
}

TvxDesignerCollection::TvxDesignerCollection(QObject *parent) : QObject(parent)
{
    using VexilDesigner::flagIcon;
    const QList<TvxWidgetPlugin::Entry> entries{
        entry("TVexil", "vxcomp.h", "Vexil1",
              tr("Translation component: one text per language for every translatable property of the form"),
              flagIcon(QColor(200, 40, 40), QStringLiteral("V")), true, &createTranslationComponent<TVexil>),
        entry("TVexilRTSE", "vxvexilrtse.h", "VexilRTSE1",
              tr("Translation component whose end users edit the translations in the external editor"),
              flagIcon(QColor(220, 120, 20), QStringLiteral("SE")), true, &createTranslationComponent<TVexilRTSE>),
        entry("TVexilRT", "vxvexilrt.h", "VexilRT1",
              tr("Translation component with a storage file and the run-time translation editor"),
              flagIcon(QColor(230, 190, 30), QStringLiteral("RT")), true, &createTranslationComponent<TVexilRT>),
        entry("TVexilLinked", "vxvexillinked.h", "VexilLinked1",
              tr("Translation component that takes dialog texts and locales from a common container"),
              flagIcon(QColor(40, 150, 60), QStringLiteral("L")), true, &createTranslationComponent<TVexilLinked>),
        entry("TVexilTLV", "vxvexiltlv.h", "VexilTLV1",
              tr("Translation component that also translates list- and tree-view items"),
              flagIcon(QColor(30, 130, 190), QStringLiteral("TV")), true, &createTranslationComponent<TVexilTLV>),
        entry("TVexilDispatcher", "vxdispatcher.h", "VexilDispatcher1",
              tr("Language dispatcher: switches the translation components of several forms together"),
              flagIcon(QColor(90, 60, 170), QStringLiteral("D")), true, &createDispatcher),
        entry("TvxLabel", "vxlabel.h", "vxLabel1", tr("Label with three-dimensional text"),
              flagIcon(QColor(130, 130, 130), QStringLiteral("A")), false, &createLabel),
        entry("TvxFormStorage", "vxformstorage.h", "vxFormStorage1",
              tr("Form placement store: keeps the form's position and size between runs"),
              flagIcon(QColor(60, 60, 60), QStringLiteral("FS")), true, &createFormStorage),
    };
    for (const auto &e : entries)
        m_widgets << new TvxWidgetPlugin(e, this);
}

void TvxDesignerCollection::initialize(QDesignerFormEditorInterface *core)
{
    if (m_expert || !core)
        return;
    m_core = core;
    // Nothing may be thrown back into Designer.
    try {
        m_expert = new TVexilExpert(core, this);
        // The expert goes with the form editor it works in; a later form
        // editor gets an expert of its own.
        connect(core, &QObject::destroyed, this, [this] {
            delete m_expert.data();
            m_core = nullptr;
        });
        if (!m_expert->menuItem()) {
            // Designer builds its menus after its plugins: try again once
            // its window is up.
            QPointer<TVexilExpert> expert = m_expert;
            QTimer::singleShot(0, core, [expert] {
                if (expert && !expert->menuItem())
                    expert->Configure();
            });
        }
    } catch (const std::exception &error) {
        QMessageBox::warning(nullptr, QStringLiteral("TVexil Expert"), QString::fromLocal8Bit(error.what()));
    } catch (...) {
        QMessageBox::warning(nullptr, QStringLiteral("TVexil Expert"), QStringLiteral("The expert could not start."));
    }
}
