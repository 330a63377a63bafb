// Forms inside forms: each translation component translates its own form,
// and the form around it leaves the inner one alone. Also which object a
// component belongs to when it is created somewhere inside a form.
#include "tablekeys.h"
#include "vxcomp.h"
#include "vxerrors.h"

#include <QtTest>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace {

// A form class as Designer and uic make them: its own widgets and its own
// component, created in its constructor under the form itself.
class AddressPanel : public QWidget
{
    Q_OBJECT
public:
    explicit AddressPanel(QWidget *parent = nullptr) : QWidget(parent)
    {
        setObjectName(QStringLiteral("AddressPanel"));
        setToolTip(QStringLiteral("Where to send it"));
        street = new QLabel(QStringLiteral("Street"), this);
        street->setObjectName(QStringLiteral("lblStreet"));
        vx = new TVexil(this);
        vx->setObjectName(QStringLiteral("vexil"));
        vx->setNumOfLanguages(2);
        vx->setCaptions({QStringLiteral("AddressPanel\tAddress\tAdresse\t"),
                         QStringLiteral("lblStreet\tStreet\tStraße\t")});
    }
    QLabel *street;
    TVexil *vx;
};

// The same without Q_OBJECT: its meta-object says QWidget.
class PlainPanel : public QWidget
{
public:
    explicit PlainPanel(QWidget *parent = nullptr) : QWidget(parent)
    {
        auto *box = new QGroupBox(QStringLiteral("Box"), this);
        box->setObjectName(QStringLiteral("box"));
        vx = new TVexil(box); // dropped into a group box of the form
    }
    TVexil *vx;
};

class OrderWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit OrderWindow(bool panelFirst)
    {
        setObjectName(QStringLiteral("OrderWindow"));
        setWindowTitle(QStringLiteral("Order"));
        auto *central = new QWidget(this);
        central->setObjectName(QStringLiteral("centralwidget"));
        setCentralWidget(central);
        auto *layout = new QVBoxLayout(central);
        if (panelFirst) {
            panel = new AddressPanel(central);
            layout->addWidget(panel);
        }
        send = new QPushButton(QStringLiteral("Send"), central);
        send->setObjectName(QStringLiteral("btnSend"));
        layout->addWidget(send);
        vx = new TVexil(central); // Designer puts it on the central widget
        vx->setObjectName(QStringLiteral("vexil"));
        vx->setNumOfLanguages(2);
        if (!panelFirst) {
            panel = new AddressPanel(central);
            layout->addWidget(panel);
        }
    }
    AddressPanel *panel = nullptr;
    QPushButton *send;
    TVexil *vx;
};

} // namespace

class TstEmbedded : public QObject
{
    Q_OBJECT
private slots:
    void nestedFormsHaveOneComponentEach_data();
    void nestedFormsHaveOneComponentEach();
    void formEmbeddedAfterConstructionKeepsItsLines();
    void ownerIsTheFormAroundTheParent();
    void dataModuleOwnerFreesItsComponent();
};

void TstEmbedded::nestedFormsHaveOneComponentEach_data()
{
    QTest::addColumn<bool>("panelFirst");
    QTest::newRow("inner form built first") << true;
    QTest::newRow("inner form built last") << false;
}

void TstEmbedded::nestedFormsHaveOneComponentEach()
{
    QFETCH(bool, panelFirst);
    OrderWindow window(panelFirst); // neither component may refuse
    QCOMPARE(window.vx->owner(), &window);
    QCOMPARE(window.panel->vx->owner(), window.panel);

    window.vx->SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    window.vx->BuildList();
    const QStringList outer = keys(window.vx->Captions()) + keys(window.vx->Hints())
        + keys(window.vx->OtherStrings()) + keys(window.vx->Fonts());
    for (const QString &key : outer) {
        QVERIFY2(!key.startsWith(QLatin1String("lblStreet")) && !key.startsWith(QLatin1String("AddressPanel")),
                 qPrintable(key));
    }
    QVERIFY(keys(window.vx->Captions()).contains(QStringLiteral("btnSend")));

    // The outer switch writes only the outer form.
    window.vx->ReplaceStringValue(window.vx->Captions(), QStringLiteral("btnSend"), QStringLiteral("Senden"), 2);
    window.vx->SetActLang(2);
    QCOMPARE(window.send->text(), QStringLiteral("Senden"));
    QCOMPARE(window.panel->street->text(), QStringLiteral("Street"));
    QCOMPARE(window.panel->toolTip(), QStringLiteral("Where to send it"));

    // The inner one writes its own form, never the window around it.
    window.panel->vx->SetActLang(2);
    QCOMPARE(window.panel->street->text(), QStringLiteral("Straße"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Order"));
    QCOMPARE(window.send->text(), QStringLiteral("Senden"));
}

void TstEmbedded::formEmbeddedAfterConstructionKeepsItsLines()
{
    OrderWindow window(false);
    auto *panel = new AddressPanel; // a window of its own while it is built
    panel->vx->Loaded();
    panel->vx->BuildList();
    QCOMPARE(keys(panel->vx->Captions()).first(), QStringLiteral("AddressPanel"));

    window.centralWidget()->layout()->addWidget(panel); // now embedded
    panel->vx->BuildList();
    QCOMPARE(keys(panel->vx->Captions()),
             (QStringList{QStringLiteral("AddressPanel"), QStringLiteral("lblStreet")}));
    QCOMPARE(panel->vx->Hints()->at(0).section(QLatin1Char('\t'), 0, 0), QStringLiteral("AddressPanel"));
    panel->vx->SetActLang(2);
    QCOMPARE(panel->street->text(), QStringLiteral("Straße"));
    QCOMPARE(panel->windowTitle(), QStringLiteral("Adresse")); // its own line, not the label's
    QCOMPARE(window.windowTitle(), QStringLiteral("Order"));
}

void TstEmbedded::ownerIsTheFormAroundTheParent()
{
    // A group box of a plain form belongs to that form, also when the
    // form class has no Q_OBJECT and so reports QWidget.
    QWidget outer;
    TVexil outerVx(&outer);
    auto *plain = new PlainPanel(&outer);
    QCOMPARE(plain->vx->owner(), plain);

    // Plain Qt containers never are forms of their own: a second component
    // under one still meets the first.
    auto *box = new QGroupBox(&outer);
    try {
        TVexil again(box);
        QFAIL("a second component on the form was accepted");
    } catch (const EVexilError &e) {
        QCOMPARE(e.message(), QStringLiteral("Only one TvxCustomLang component per Form/DataModule allowed!"));
    }
}

void TstEmbedded::dataModuleOwnerFreesItsComponent()
{
    auto *module = new QObject;
    QPointer<TVexil> vx = new TVexil(module);
    delete module;
    QVERIFY(vx.isNull()); // freed with its owner

    // The owner's place is free again, whatever lands at its address.
    for (int i = 0; i < 50; ++i) {
        QObject next;
        TVexil again(&next);
        QCOMPARE(TvxCustomLang::componentOf(&next), &again);
    }
}

QTEST_MAIN(TstEmbedded)
#include "tst_embedded.moc"
