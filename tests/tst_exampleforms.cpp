// Discovery and switching on forms nobody here wrote: the Designer forms
// that Debian's Qt example package ships, loaded with QUiLoader. Every
// form is translated into a marked second language and back; the marks must
// reach the widgets, and the way back must restore every property.
#include "vxcomp.h"
#include "vxpropaccess.h"
#include "vxpropinfolist.h"

#include <QtTest>
#include <QtCore/QDirIterator>
#include <QtCore/QMetaProperty>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLineEdit>

namespace {

// Where Debian's qtbase5-examples puts them: /usr/lib/<multiarch triplet>/qt5/examples.
QString examplesDir()
{
    const QStringList arches = QDir(QStringLiteral("/usr/lib")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &arch : arches) {
        const QString dir = QStringLiteral("/usr/lib/%1/qt5/examples").arg(arch);
        if (QDir(dir).exists())
            return dir;
    }
    return QString();
}
const QString mark = QStringLiteral("\u00bb");

QStringList exampleForms()
{
    QStringList files;
    const QString dir = examplesDir();
    if (dir.isEmpty())
        return {};
    QDirIterator it(dir, {QStringLiteral("*.ui")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    files.sort();
    return files;
}

// Where layouts put a widget: worked out lazily, so no text of a form.
const QSet<QByteArray> &geometryProperties()
{
    static const QSet<QByteArray> names = {"geometry", "frameGeometry", "normalGeometry", "x", "y", "pos",
                                           "width", "height", "size", "frameSize", "rect", "childrenRect",
                                           "childrenRegion", "sizeHint", "minimumSizeHint"};
    return names;
}

// Every property of every named object of the form as text, plus the item lists
// and collections the engine translates: what a switch must give back.
QMap<QString, QString> snapshot(QWidget *form)
{
    QMap<QString, QString> values;
    // Reading a property may make or drop Qt's helper objects, so the list
    // is watched while it is walked.
    QList<QPointer<QObject>> objects{form};
    for (QObject *child : form->findChildren<QObject *>())
        objects << child;
    QHash<QString, int> seen;
    for (const QPointer<QObject> &object : std::as_const(objects)) {
        if (!object)
            continue;
        bool ofComponent = false;
        for (QObject *o = object; o && !ofComponent; o = o->parent())
            ofComponent = qobject_cast<TvxCustomLang *>(o) != nullptr;
        // Unnamed objects are Qt's own helpers, whose sizes follow layouts.
        if (ofComponent || object->objectName().isEmpty())
            continue;
        QString id;
        for (QObject *o = object; o && o != form; o = o->parent())
            id += QLatin1Char('/') + QLatin1String(o->metaObject()->className()) + QLatin1Char(':') + o->objectName();
        const QString prefix = id + QLatin1Char('#') + QString::number(seen[id]++) + QLatin1Char('.');
        const QMetaObject *mo = object->metaObject();
        for (int i = 0; i < mo->propertyCount() && object; ++i) {
            const QMetaProperty p = mo->property(i);
            if (geometryProperties().contains(QByteArray(p.name())))
                continue;
            const QVariant v = p.read(object);
            if (v.metaType().id() == QMetaType::QStringList)
                values.insert(prefix + QLatin1String(p.name()), v.toStringList().join(QLatin1Char('\n')));
            else if (v.canConvert<QString>())
                values.insert(prefix + QLatin1String(p.name()), v.toString());
        }
        const TvxPropInfoList lists(object, TvxPropInfo::StringList | TvxPropInfo::Collection);
        for (const TvxPropInfo &info : lists.items()) {
            if (info.kind == TvxPropInfo::StringList) {
                values.insert(prefix + info.name, TvxPropAccess::readLines(object, info.name).join(QLatin1Char('\n')));
                continue;
            }
            const int count = TvxPropAccess::collectionCount(object, info.name);
            for (int item = 0; item < count; ++item) {
                for (const QString &prop : TvxPropAccess::collectionItemProperties(info.name))
                    values.insert(prefix + info.name + QString::number(item) + prop,
                                  TvxPropAccess::readItem(object, info.name, item, prop));
            }
        }
    }
    return values;
}

// Gives every line a language-2 text: language 1's text with a mark in front
// (each item marked for multi-line texts).
void markSecondLanguage(TvxCustomLang *vx, TvxStringList *list, bool multiLine)
{
    for (int i = 0; i < list->count(); ++i) {
        const QString key = list->at(i).section(QLatin1Char('\t'), 0, 0);
        const QString text = vx->GetStringValue(list, key, 1);
        if (text.isEmpty())
            continue;
        QString marked = mark + text;
        if (multiLine) {
            QStringList items = TvxStringList::fromCommaText(text);
            for (QString &item : items)
                item.prepend(mark);
            marked = TvxStringList::toCommaText(items);
        }
        vx->ReplaceStringValue(list, key, marked, 2);
    }
}

} // namespace

class TstExampleForms : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip_data();
    void roundTrip();
};

void TstExampleForms::roundTrip_data()
{
    QTest::addColumn<QString>("file");
    const QStringList files = exampleForms();
    if (files.isEmpty())
        QSKIP("Debian's qtbase5-examples package is not installed (scripts/setup.sh installs it)");
    for (const QString &file : files)
        QTest::newRow(qPrintable(file.mid(examplesDir().size() + 1))) << file;
}

void TstExampleForms::roundTrip()
{
    QFETCH(QString, file);
    QUiLoader loader;
    QFile ui(file);
    QVERIFY(ui.open(QIODevice::ReadOnly));
    std::unique_ptr<QWidget> form(loader.load(&ui));
    QVERIFY2(form, qPrintable(loader.errorString()));
    // What applications commonly add to their forms: user input with a
    // clear button, and explicit shortcuts on buttons without a mnemonic.
    for (QLineEdit *edit : form->findChildren<QLineEdit *>()) {
        if (!edit->objectName().isEmpty() && !edit->objectName().startsWith(QLatin1String("qt_"))) {
            edit->setClearButtonEnabled(true);
            edit->setText(QStringLiteral("typed by the user"));
        }
    }
    for (QAbstractButton *button : form->findChildren<QAbstractButton *>()) {
        if (!button->objectName().isEmpty() && !button->text().isEmpty() && !button->text().contains(QLatin1Char('&')))
            button->setShortcut(QKeySequence(Qt::Key_F5));
    }
    const QMap<QString, QString> before = snapshot(form.get());
    QMap<QString, QKeySequence> shortcuts;
    for (QAbstractButton *button : form->findChildren<QAbstractButton *>())
        shortcuts.insert(button->objectName(), button->shortcut());

    auto *vx = new TVexil(form.get());
    vx->SetNumLang(2);
    vx->BuildList(); // the form is hidden: code still builds at once
    QVERIFY(vx->Fonts()->count() > 1);

    // Only the form's own objects have lines, each name once per table.
    QSet<QString> names;
    for (QObject *object : form->findChildren<QObject *>())
        names.insert(object->objectName());
    for (TStringsType t : {stCaptions, stHints, stFonts, stMultiLines, stOtherStrings, stCollections}) {
        TvxStringList *list = vx->GetPropListByType(t);
        QSet<QString> seen;
        for (int i = 0; i < list->count(); ++i) {
            const QString key = list->at(i).section(QLatin1Char('\t'), 0, 0);
            QVERIFY2(!seen.contains(key), qPrintable(key));
            seen.insert(key);
            const QString name = key.section(QLatin1Char('.'), 0, 0);
            if (i == 0 && (t == stCaptions || t == stHints || t == stFonts))
                continue; // the form's own line
            QVERIFY2(names.contains(name) || name == QLatin1String(form->metaObject()->className()), qPrintable(key));
            QVERIFY2(!name.startsWith(QLatin1String("qt_")) && !name.startsWith(QLatin1Char('_'))
                         && !name.startsWith(QLatin1String("Scroll")),
                     qPrintable(key));
        }
    }

    // What the user types is never a caption.
    for (QLineEdit *edit : form->findChildren<QLineEdit *>())
        QVERIFY2(vx->GetStringValue(vx->Captions(), edit->objectName(), 1).isNull() || edit->objectName().isEmpty(),
                 qPrintable(edit->objectName()));

    for (TStringsType t : {stCaptions, stHints, stOtherStrings, stCollections})
        markSecondLanguage(vx, vx->GetPropListByType(t), false);
    markSecondLanguage(vx, vx->MultiLines(), true);
    vx->SetActLang(2);

    // Every caption line reached its widget.
    for (int i = 1; i < vx->Captions()->count(); ++i) {
        const QString key = vx->Captions()->at(i).section(QLatin1Char('\t'), 0, 0);
        QObject *object = form->findChild<QObject *>(key);
        QVERIFY(object);
        const QString text = TvxPropAccess::readString(object, TvxPropInfoList::captionProperty(object));
        QVERIFY2(text.isEmpty() || text.startsWith(mark), qPrintable(key + QLatin1String(": ") + text));
    }
    for (QAbstractButton *button : form->findChildren<QAbstractButton *>()) {
        if (button->text().startsWith(mark) && !shortcuts.value(button->objectName()).isEmpty()) {
            const QKeySequence expected = shortcuts.value(button->objectName());
            QCOMPARE(button->shortcut(), expected);
        }
    }

    vx->SetActLang(1);
    const QMap<QString, QString> after = snapshot(form.get());
    QStringList lost;
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        if (after.value(it.key()) != it.value())
            lost << it.key() + QLatin1String(": ") + it.value() + QLatin1String(" -> ") + after.value(it.key());
    }
    QVERIFY2(lost.isEmpty(), qPrintable(lost.join(QLatin1Char('\n'))));
}

QTEST_MAIN(TstExampleForms)
#include "tst_exampleforms.moc"
