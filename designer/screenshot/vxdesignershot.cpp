// vexil-designer-shot OUT.png: Designer's form editor, in-process, with the
// suite's plugin loaded from the build tree: the widget box opened on the
// suite's page, a form holding a translation component, that component's
// context menu open, and the object inspector and property editor beside it.
#include "vxcomp.h"

#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerObjectInspectorInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerWidgetBoxInterface>
#include <QtDesigner/private/formwindowbase_p.h>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMdiArea>
#include <QtWidgets/QMdiSubWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTreeWidget>

#include <cstdio>
#include <memory>

namespace {

const char formXml[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>OrderForm</class>
 <widget class="QWidget" name="OrderForm">
  <property name="geometry"><rect><x>0</x><y>0</y><width>380</width><height>230</height></rect></property>
  <property name="windowTitle"><string>Order</string></property>
  <widget class="QLabel" name="customerLabel">
   <property name="geometry"><rect><x>20</x><y>24</y><width>90</width><height>22</height></rect></property>
   <property name="text"><string>&amp;Customer:</string></property>
  </widget>
  <widget class="QLineEdit" name="customerEdit">
   <property name="geometry"><rect><x>120</x><y>22</y><width>220</width><height>26</height></rect></property>
   <property name="toolTip"><string>Name of the customer</string></property>
  </widget>
  <widget class="QLabel" name="quantityLabel">
   <property name="geometry"><rect><x>20</x><y>64</y><width>90</width><height>22</height></rect></property>
   <property name="text"><string>&amp;Quantity:</string></property>
  </widget>
  <widget class="QSpinBox" name="quantityBox">
   <property name="geometry"><rect><x>120</x><y>62</y><width>80</width><height>26</height></rect></property>
  </widget>
  <widget class="QCheckBox" name="expressBox">
   <property name="geometry"><rect><x>120</x><y>100</y><width>200</width><height>22</height></rect></property>
   <property name="text"><string>Express delivery</string></property>
  </widget>
  <widget class="QPushButton" name="okButton">
   <property name="geometry"><rect><x>150</x><y>180</y><width>90</width><height>30</height></rect></property>
   <property name="text"><string>&amp;Order</string></property>
  </widget>
  <widget class="QPushButton" name="cancelButton">
   <property name="geometry"><rect><x>250</x><y>180</y><width>90</width><height>30</height></rect></property>
   <property name="text"><string>Cancel</string></property>
  </widget>
  <widget class="TVexil" name="Vexil1">
   <property name="geometry"><rect><x>20</x><y>176</y><width>28</width><height>28</height></rect></property>
   <property name="NumOfLanguages"><number>3</number></property>
  </widget>
 </widget>
 <customwidgets>
  <customwidget><class>TVexil</class><extends>QWidget</extends><header>vxcomp.h</header></customwidget>
 </customwidgets>
 <resources/>
 <connections/>
</ui>
)";

// Opens the widget box on the suite's page: every other group folded.
void showSuitePage(QWidget *widgetBox)
{
    for (QTreeWidget *tree : widgetBox->findChildren<QTreeWidget *>()) {
        QTreeWidgetItem *suite = nullptr;
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            QTreeWidgetItem *group = tree->topLevelItem(i);
            const bool ours = group->text(0) == QLatin1String("Kestrava");
            group->setExpanded(ours);
            if (ours)
                suite = group;
        }
        if (suite)
            tree->scrollToItem(suite, QAbstractItemView::PositionAtTop);
    }
}

} // namespace

int main(int argc, char **argv)
{
    // The offscreen platform's screen is small; a menu taller than it would
    // scroll. Give it a desktop-sized screen.
    QTemporaryDir config;
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen" && config.isValid()) {
        QFile screens(config.filePath(QStringLiteral("screens.json")));
        if (screens.open(QIODevice::WriteOnly)) {
            screens.write(R"({"screens": [{"name": "shot", "x": 0, "y": 0, "width": 1920, "height": 1200,
                              "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
            screens.close();
            qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toLocal8Bit());
        }
    }
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: vexil-designer-shot OUT.png\n");
        return 2;
    }
    QCoreApplication::addLibraryPath(QStringLiteral(VEXIL_PLUGIN_DIR));

    // The core outlives the window: the docked tools use it as they go.
    std::unique_ptr<QDesignerFormEditorInterface> core(QDesignerComponents::createFormEditor(nullptr));
    std::unique_ptr<QMainWindow> owner(new QMainWindow);
    QMainWindow &window = *owner;
    window.setWindowTitle(QStringLiteral("Qt Designer"));
    core->setTopLevel(&window);
    QDesignerComponents::createTaskMenu(core.get(), &window);
    new QDesignerIntegration(core.get(), &window);
    QDesignerComponents::initializePlugins(core.get());

    QDesignerWidgetBoxInterface *widgetBox = QDesignerComponents::createWidgetBox(core.get(), nullptr);
    core->setWidgetBox(widgetBox);
    QDesignerObjectInspectorInterface *inspector = QDesignerComponents::createObjectInspector(core.get(), nullptr);
    core->setObjectInspector(inspector);
    QDesignerPropertyEditorInterface *properties = QDesignerComponents::createPropertyEditor(core.get(), nullptr);
    core->setPropertyEditor(properties);

    for (const char *title : {"&File", "&Edit", "F&orm", "&View", "&Settings", "&Window", "&Help"})
        window.menuBar()->addMenu(QString::fromLatin1(title));
    auto dock = [&window](QWidget *content, const char *title, Qt::DockWidgetArea area) {
        auto *widget = new QDockWidget(QString::fromLatin1(title), &window);
        widget->setWidget(content);
        window.addDockWidget(area, widget);
        return widget;
    };
    dock(widgetBox, "Widget Box", Qt::LeftDockWidgetArea);
    QDockWidget *inspectorDock = dock(inspector, "Object Inspector", Qt::RightDockWidgetArea);
    QDockWidget *propertiesDock = dock(properties, "Property Editor", Qt::RightDockWidgetArea);
    window.resizeDocks({inspectorDock, propertiesDock}, {200, 420}, Qt::Vertical);

    auto *area = new QMdiArea(&window);
    area->setBackground(QColor(0x90, 0x98, 0xa4));
    window.setCentralWidget(area);
    QDesignerFormWindowInterface *form = core->formWindowManager()->createFormWindow(nullptr);
    form->setFileName(QStringLiteral("orderform.ui"));
    form->setContents(QString::fromUtf8(formXml));
    QMdiSubWindow *sub = area->addSubWindow(form);
    sub->setWindowTitle(QStringLiteral("OrderForm - orderform.ui"));
    sub->resize(420, 290);
    sub->move(24, 24);
    core->formWindowManager()->setActiveFormWindow(form);

    window.resize(1360, 900);
    window.resizeDocks({qobject_cast<QDockWidget *>(widgetBox->parentWidget()), inspectorDock}, {250, 330},
                       Qt::Horizontal);
    window.show();
    showSuitePage(widgetBox);

    auto *vexil = form->mainContainer()->findChild<TVexil *>();
    if (!vexil) {
        std::fprintf(stderr, "vexil-designer-shot: the plugin was not loaded from %s\n", VEXIL_PLUGIN_DIR);
        return 1;
    }
    form->clearSelection(false);
    form->selectWidget(vexil, true);
    core->propertyEditor()->setObject(vexil);
    core->objectInspector()->setFormWindow(form);
    QCoreApplication::processEvents();

    // Designer's own context menu of the component, open beside it.
    auto *formBase = qobject_cast<qdesigner_internal::FormWindowBase *>(form);
    QMenu *menu = formBase ? formBase->initializePopupMenu(vexil) : nullptr;
    QPixmap shot = window.grab();
    if (menu) {
        const QPoint at = vexil->mapTo(&window, QPoint(vexil->width() / 2, vexil->height() / 2));
        menu->ensurePolished();
        menu->adjustSize();
        const QPixmap popup = menu->grab();
        QPainter painter(&shot);
        const QPoint place(at.x(), qMin(at.y(), shot.height() - popup.height() - 4));
        painter.fillRect(QRect(place + QPoint(3, 3), popup.size()), QColor(0, 0, 0, 60)); // its shadow
        painter.drawPixmap(place, popup);
        painter.setPen(QColor(0x80, 0x80, 0x80));
        painter.drawRect(QRect(place, popup.size()).adjusted(0, 0, -1, -1));
    }
    if (!shot.save(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "vexil-designer-shot: cannot write %s\n", argv[1]);
        return 1;
    }
    delete menu;
    std::printf("%s\n", argv[1]);
    // The form goes before the window that shows it, the window before the core.
    core->formWindowManager()->removeFormWindow(form);
    delete form;
    owner.reset();
    return 0;
}
