// The expert's project model on real folders: which files are forms and
// units, which unit is the project file, and each form's translation state
// as its .ui holds it.
#include "expertforms.h"

#include "vxproject.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace ExpertForms;

class TestProject : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void formsUnitsAndProjectFile();
    void translationStateFromTheUi();
    void untranslatedTextsPerLanguage();
    void badFilesAreListedWithTheirError();
};

void TestProject::formsUnitsAndProjectFile()
{
    QTemporaryDir dir;
    const QString d = dir.path() + QLatin1Char('/');
    QVERIFY(writeFile(d + QStringLiteral("orders.ui"), formUi(QStringLiteral("OrdersForm"))));
    QVERIFY(writeFile(d + QStringLiteral("Address.ui"), formUi(QStringLiteral("AddressForm"))));
    QVERIFY(writeFile(d + QStringLiteral("orders.cpp"), QStringLiteral("#include \"orders.h\"\n")));
    QVERIFY(writeFile(d + QStringLiteral("orders.h"), QStringLiteral("#pragma once\n")));
    QVERIFY(writeFile(d + QStringLiteral("app.cpp"), QStringLiteral("int main(int argc, char **argv)\n{\n}\n")));
    QVERIFY(writeFile(d + QStringLiteral("notes.txt"), QStringLiteral("int main(")));
    QVERIFY(QDir(d).mkdir(QStringLiteral("sub")));
    QVERIFY(writeFile(d + QStringLiteral("sub/other.ui"), formUi(QStringLiteral("OtherForm"))));

    TvxProject project(dir.path());
    QStringList names;
    for (const TvxProjectForm &form : project.forms())
        names << form.formName;
    // Name order, case ignored; the sub-folder is not the project's.
    QCOMPARE(names, (QStringList{QStringLiteral("AddressForm"), QStringLiteral("OrdersForm")}));
    const TvxProjectForm &orders = project.forms().at(project.indexOf(QStringLiteral("OrdersForm")));
    QCOMPARE(orders.className, QStringLiteral("OrdersForm"));
    QCOMPARE(orders.cppPath, d + QStringLiteral("orders.cpp"));
    QCOMPARE(orders.hPath, d + QStringLiteral("orders.h"));
    const TvxProjectForm &address = project.forms().at(project.indexOf(QStringLiteral("AddressForm")));
    QVERIFY(address.cppPath.isEmpty() && address.hPath.isEmpty());
    QCOMPARE(project.units().size(), 3);
    QCOMPARE(project.projectFile(), d + QStringLiteral("app.cpp"));
    QCOMPARE(project.indexOf(QStringLiteral("Nothing")), -1);

    // A new file shows after a refresh.
    QVERIFY(writeFile(d + QStringLiteral("zeta.ui"), formUi(QStringLiteral("ZetaForm"))));
    QCOMPARE(project.forms().size(), 2);
    project.refresh();
    QCOMPARE(project.forms().size(), 3);
    // No folder, no forms.
    project.setFolder(QString());
    QVERIFY(project.forms().isEmpty() && project.projectFile().isEmpty());
}

void TestProject::translationStateFromTheUi()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("form1.ui"));
    QVERIFY(writeFile(path, formUi(QStringLiteral("Form1"), QStringLiteral("TVexilRT"), 3,
                                   {QStringLiteral("Form1\tOrders\tCommandes\tOrdini\t"),
                                    QStringLiteral("pushButton\tHello\t\t\t")},
                                   {QStringLiteral("pushButton\tPress\tAppuyez\t\t")})));
    const TvxProjectForm form = VexilProject::readForm(path);
    QVERIFY(form.error.isEmpty());
    QCOMPARE(form.formName, QStringLiteral("Form1"));
    QVERIFY(form.state.hasComponent());
    QCOMPARE(form.state.componentClass, QStringLiteral("TVexilRT"));
    QCOMPARE(form.state.componentName, QStringLiteral("Vexil1"));
    QCOMPARE(form.state.numLanguages, 3);
    QCOMPARE(form.state.categories, (QStringList{QStringLiteral("Captions"), QStringLiteral("Hints")}));
    QCOMPARE(form.state.lines(QStringLiteral("Captions")), 2);
    QCOMPARE(form.state.lines(QStringLiteral("Hints")), 1);
    QCOMPARE(form.state.lines(QStringLiteral("Fonts")), 0);
    QCOMPARE(form.state.untranslated, (QList<int>{0, 1, 2}));

    // A form without a component; an unknown class is no translation component.
    QVERIFY(writeFile(path, formUi(QStringLiteral("Form1"), QStringLiteral("TMyVexil"), 2,
                                   {QStringLiteral("a\tb\tc\t")})));
    const TvxProjectForm plain = VexilProject::readForm(path);
    QVERIFY(plain.error.isEmpty());
    QVERIFY(!plain.state.hasComponent());
    QCOMPARE(plain.state.numLanguages, 0);
}

void TestProject::untranslatedTextsPerLanguage()
{
    const QStringList categories{QStringLiteral("Captions"), QStringLiteral("Strings")};
    // Short lines lack the later languages; a text that is only blanks counts
    // as a text; a custom delimiter splits the fields.
    const TvxTranslationState state = VexilProject::countTables(
        categories,
        {{QStringLiteral("a;one;un;"), QStringLiteral("b;two"), QStringLiteral("c;; ;")},
         {QStringLiteral("IDS_1;x;y;z;extra;")}},
        2, QLatin1Char(';'));
    QCOMPARE(state.lineCounts, (QList<int>{3, 1}));
    QCOMPARE(state.untranslated, (QList<int>{1, 1}));
    // Empty tables are not listed.
    const TvxTranslationState empty = VexilProject::countTables(categories, {{}, {}}, 2, QLatin1Char('\t'));
    QVERIFY(empty.categories.isEmpty());
    QCOMPARE(empty.untranslated, (QList<int>{0, 0}));
}

void TestProject::badFilesAreListedWithTheirError()
{
    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath(QStringLiteral("broken.ui")),
                      QStringLiteral("<ui version=\"4.0\"><class>Broken</class><widget class=\"QWidget\" name=\"Broken\">")));
    QVERIFY(writeFile(dir.filePath(QStringLiteral("good.ui")), formUi(QStringLiteral("Good"), QStringLiteral("TVexil"))));
    TvxProject project(dir.path());
    QCOMPARE(project.forms().size(), 2);
    const TvxProjectForm &broken = project.forms().at(0);
    QCOMPARE(broken.formName, QStringLiteral("Broken"));
    QVERIFY(!broken.error.isEmpty());
    QVERIFY(!broken.state.hasComponent());
    QVERIFY(project.forms().at(1).error.isEmpty());
    // A file that cannot be opened.
    const TvxProjectForm missing = VexilProject::readForm(dir.filePath(QStringLiteral("missing.ui")));
    QVERIFY(!missing.error.isEmpty());
}

QTEST_GUILESS_MAIN(TestProject)
#include "tst_project.moc"
