// The dictionary's store and its TMX exchange, on real SQLite files.
#include "vxdictstore.h"
#include "vxtmx.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>
#include <QtTest/QTest>

namespace {

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

// Runs @p call and returns the kind of error it raised, or -1.
template <typename F>
int errorKind(F &&call, QString *message = nullptr)
{
    try {
        call();
    } catch (const EDictionaryError &e) {
        if (message)
            *message = e.message();
        return e.kind();
    }
    return -1;
}

const QString longText = QString(TvxDictionaryStore::MaxTextLength + 1, QLatin1Char('x'));
const QString longestText = QString(TvxDictionaryStore::MaxTextLength, QLatin1Char('y'));

} // namespace

class TestDictStore : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const QString &name) const { return m_dir.filePath(name); }

private slots:
    void languagesIgnoreCaseAndKeepTheirOrder();
    void translationsAnswerBetweenAnyTwoLanguages();
    void addingFindsTheUnitByEitherText();
    void refusedInputChangesNothing();
    void lookUpUsesTheIndex();
    void onlySavedWorkSurvivesClosing();
    void readOnlyDictionaryCannotChange();
    void damagedOrForeignFilesAreReportedAndKept();
    void unicodeSurvivesFileAndTmx();
    void browsingFiltersEditsAndDeletes();
    void tmxRoundTripMapsLanguageNamesToCodes();
    void tmxImportMergesAndSkipsMarkup();
    void damagedTmxImportsNothing();
};

void TestDictStore::languagesIgnoreCaseAndKeepTheirOrder()
{
    TvxDictionaryStore store;
    QVERIFY2(store.open(path(QStringLiteral("langs.sqlite"))), qPrintable(store.errorString()));
    QCOMPARE(store.indexOfLang(QStringLiteral("ENGLISH")), -1);
    store.addLanguage(QStringLiteral("ENGLISH"));
    store.addLanguage(QStringLiteral("Русский"));
    store.addLanguage(QStringLiteral("german"));
    store.addLanguage(QStringLiteral("English"));  // already there
    QCOMPARE(store.languages(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("Русский"),
                                             QStringLiteral("german")}));
    QCOMPARE(store.indexOfLang(QStringLiteral("english")), 0);
    QCOMPARE(store.indexOfLang(QStringLiteral("РУССКИЙ")), 1);
    QCOMPARE(store.indexOfLang(QStringLiteral("GERMAN")), 2);
    QCOMPARE(store.indexOfLang(QString()), -1);
    QCOMPARE(errorKind([&] { store.addLanguage(QString()); }), int(EDictionaryError::ekArgument));

    // Positions stay after saving and opening again.
    QVERIFY(store.save());
    store.close();
    QVERIFY(store.open(path(QStringLiteral("langs.sqlite"))));
    QCOMPARE(store.indexOfLang(QStringLiteral("German")), 2);
}

void TestDictStore::translationsAnswerBetweenAnyTwoLanguages()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("pivot.sqlite"))));
    store.addTranslation(QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("House"),
                         QStringLiteral("Haus"));
    store.addTranslation(QStringLiteral("ENGLISH"), QStringLiteral("FRENCH"), QStringLiteral("House"),
                         QStringLiteral("Maison"));
    QCOMPARE(store.languages().size(), 3);  // unknown languages were added
    QCOMPARE(store.unitCount(), 1);
    QCOMPARE(store.getTranslation(QStringLiteral("german"), QStringLiteral("french"), QStringLiteral("Haus")),
             QStringLiteral("Maison"));
    QCOMPARE(store.getTranslation(QStringLiteral("FRENCH"), QStringLiteral("ENGLISH"), QStringLiteral("Maison")),
             QStringLiteral("House"));
    // Texts match exactly; unknown languages and texts give an empty answer.
    QCOMPARE(store.getTranslation(QStringLiteral("GERMAN"), QStringLiteral("FRENCH"), QStringLiteral("haus")),
             QString());
    QCOMPARE(store.getTranslation(QStringLiteral("ITALIAN"), QStringLiteral("FRENCH"), QStringLiteral("Haus")),
             QString());
    QCOMPARE(store.getTranslation(QStringLiteral("GERMAN"), QStringLiteral("FRENCH"), QString()), QString());
}

void TestDictStore::addingFindsTheUnitByEitherText()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("units.sqlite"))));
    const QString en = QStringLiteral("EN"), de = QStringLiteral("DE");
    store.addTranslation(en, de, QStringLiteral("Open"), QStringLiteral("Öffnen"));
    // Found by the first text: the German text of that unit is replaced.
    store.addTranslation(en, de, QStringLiteral("Open"), QStringLiteral("Aufmachen"));
    QCOMPARE(store.unitCount(), 1);
    QCOMPARE(store.getTranslation(en, de, QStringLiteral("Open")), QStringLiteral("Aufmachen"));
    // Found by the second text (given first or second, the pair lands in one unit).
    store.addTranslation(QStringLiteral("FR"), de, QStringLiteral("Ouvrir"), QStringLiteral("Aufmachen"));
    QCOMPARE(store.unitCount(), 1);
    QCOMPARE(store.getTranslation(en, QStringLiteral("FR"), QStringLiteral("Open")), QStringLiteral("Ouvrir"));
    // Neither text known: a new unit.
    store.addTranslation(en, de, QStringLiteral("Close"), QStringLiteral("Schließen"));
    QCOMPARE(store.unitCount(), 2);
    // The first unit holding the text answers, even when a later one holds it too.
    store.addTranslation(de, QStringLiteral("FR"), QStringLiteral("Schließen"), QStringLiteral("Fermer"));
    store.setSegment(store.units().at(1).id, store.indexOfLang(en), QStringLiteral("Open"));
    QCOMPARE(store.getTranslation(en, QStringLiteral("FR"), QStringLiteral("Open")), QStringLiteral("Ouvrir"));
}

void TestDictStore::refusedInputChangesNothing()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("refuse.sqlite"))));
    store.addTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("Yes"), QStringLiteral("Ja"));
    const QString en = QStringLiteral("EN"), de = QStringLiteral("DE"), fr = QStringLiteral("FR");

    QString message;
    QCOMPARE(errorKind([&] { store.addTranslation(en, fr, longText, QStringLiteral("x")); }, &message),
             int(EDictionaryError::ekArgument));
    QVERIFY2(message.contains(QLatin1String("32768")), qPrintable(message));
    QCOMPARE(errorKind([&] { store.addTranslation(en, fr, QStringLiteral("x"), longText); }),
             int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.getTranslation(en, de, longText); }), int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.indexOfLang(longText); }), int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.addLanguage(longText); }), int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.addTranslation(en, fr, QString(), QStringLiteral("Oui")); }),
             int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.addTranslation(en, fr, QStringLiteral("Yes"), QString()); }),
             int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.addTranslation(en, QStringLiteral("en"), QStringLiteral("a"), QStringLiteral("b")); }),
             int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.addTranslation(en, fr, QStringLiteral("Yes"), QString(1, QChar(0xD800))); }),
             int(EDictionaryError::ekArgument));
    // None of them added a language or a unit or touched the pair.
    QCOMPARE(store.languages(), (QStringList{en, de}));
    QCOMPARE(store.unitCount(), 1);
    QCOMPARE(store.getTranslation(en, de, QStringLiteral("Yes")), QStringLiteral("Ja"));

    // The longest text allowed goes in and comes back.
    store.addTranslation(en, fr, longestText, QStringLiteral("long"));
    QCOMPARE(store.getTranslation(fr, en, QStringLiteral("long")), longestText);
    QCOMPARE(store.getTranslation(en, fr, longestText), QStringLiteral("long"));
}

void TestDictStore::lookUpUsesTheIndex()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("plan.sqlite"))));
    for (int i = 0; i < 200; ++i)
        store.addTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("w%1").arg(i),
                             QStringLiteral("v%1").arg(i));
    const QStringList plan = store.translationQueryPlan();
    QVERIFY(!plan.isEmpty());
    const QString text = plan.join(QLatin1Char('\n'));
    QVERIFY2(text.contains(QLatin1String("segments_lang_text")), qPrintable(text));
    QVERIFY2(!text.contains(QLatin1String("SCAN")), qPrintable(text));
    QVERIFY2(!text.contains(QLatin1String("TEMP B-TREE")), qPrintable(text));
}

void TestDictStore::onlySavedWorkSurvivesClosing()
{
    const QString file = path(QStringLiteral("save.sqlite"));
    {
        TvxDictionaryStore store;
        QVERIFY(store.open(file));
        store.addTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("one"), QStringLiteral("eins"));
        QVERIFY(store.isModified());
        QVERIFY(store.save());
        QVERIFY(!store.isModified());
        store.addTranslation(QStringLiteral("EN"), QStringLiteral("FR"), QStringLiteral("two"), QStringLiteral("deux"));
        store.addLanguage(QStringLiteral("IT"));
        // Another reader sees only what was saved, while the writer works on.
        TvxDictionaryStore reader;
        QVERIFY2(reader.open(file, true), qPrintable(reader.errorString()));
        QCOMPARE(reader.getTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("one")),
                 QStringLiteral("eins"));
        QCOMPARE(reader.indexOfLang(QStringLiteral("FR")), -1);
    }
    TvxDictionaryStore store;
    QVERIFY(store.open(file));
    QCOMPARE(store.languages(), (QStringList{QStringLiteral("EN"), QStringLiteral("DE")}));
    QCOMPARE(store.getTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("one")),
             QStringLiteral("eins"));
    QCOMPARE(store.unitCount(), 1);
}

void TestDictStore::readOnlyDictionaryCannotChange()
{
    const QString file = path(QStringLiteral("shared.sqlite"));
    {
        TvxDictionaryStore store;
        QVERIFY(store.open(file));
        store.addTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("Cat"), QStringLiteral("Katze"));
        QVERIFY(store.save());
    }
    const QByteArray before = fileBytes(file);
    TvxDictionaryStore store;
    QVERIFY2(store.open(file, true), qPrintable(store.errorString()));
    QVERIFY(store.isReadOnly());
    QCOMPARE(store.getTranslation(QStringLiteral("DE"), QStringLiteral("EN"), QStringLiteral("Katze")),
             QStringLiteral("Cat"));
    QString message;
    QCOMPARE(errorKind([&] { store.addLanguage(QStringLiteral("FR")); }, &message), int(EDictionaryError::ekReadOnly));
    QVERIFY2(message.contains(file), qPrintable(message));
    QCOMPARE(errorKind([&] { store.addTranslation(QStringLiteral("EN"), QStringLiteral("FR"), QStringLiteral("Cat"),
                                                  QStringLiteral("Chat")); }),
             int(EDictionaryError::ekReadOnly));
    QCOMPARE(errorKind([&] { store.deleteUnit(store.units().at(0).id); }), int(EDictionaryError::ekReadOnly));
    QCOMPARE(errorKind([&] { store.importUnits({}); }), int(EDictionaryError::ekReadOnly));
    QVERIFY(!store.save());
    store.close();
    QCOMPARE(fileBytes(file), before);

    // A shared dictionary that is not there is not made.
    const QString missing = path(QStringLiteral("missing.sqlite"));
    QVERIFY(!store.open(missing, true));
    QVERIFY2(store.errorString().contains(missing), qPrintable(store.errorString()));
    QVERIFY(!QFile::exists(missing));
}

void TestDictStore::damagedOrForeignFilesAreReportedAndKept()
{
    TvxDictionaryStore store;
    // Not a database at all.
    const QString garbage = path(QStringLiteral("garbage.sqlite"));
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise.append(char((i * 37) % 251));
    writeFile(garbage, noise);
    for (bool readOnly : {false, true}) {
        QVERIFY(!store.open(garbage, readOnly));
        QVERIFY2(store.errorString().contains(garbage), qPrintable(store.errorString()));
        QVERIFY(!store.isOpen());
        QCOMPARE(errorKind([&] { store.indexOfLang(QStringLiteral("EN")); }), int(EDictionaryError::ekDatabase));
    }
    QCOMPARE(fileBytes(garbage), noise);

    // A dictionary whose pages were overwritten.
    const QString damaged = path(QStringLiteral("damaged.sqlite"));
    {
        TvxDictionaryStore good;
        QVERIFY(good.open(damaged));
        for (int i = 0; i < 2000; ++i)
            good.addTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("word %1").arg(i),
                                QStringLiteral("Wort %1").arg(i));
        QVERIFY(good.save());
    }
    QByteArray bytes = fileBytes(damaged);
    QVERIFY(bytes.size() > 6 * 4096);
    for (int i = 4096; i < 4 * 4096; ++i)
        bytes[i] = char(0xA5);
    writeFile(damaged, bytes);
    QVERIFY(!store.open(damaged));
    QVERIFY2(store.errorString().contains(damaged), qPrintable(store.errorString()));
    QCOMPARE(fileBytes(damaged), bytes);

    // Another program's SQLite database.
    const QString foreign = path(QStringLiteral("foreign.sqlite"));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("foreign"));
        db.setDatabaseName(foreign);
        QVERIFY(db.open());
        QVERIFY(QSqlQuery(db).exec(QStringLiteral("CREATE TABLE contacts(name TEXT)")));
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("foreign"));
    const QByteArray foreignBytes = fileBytes(foreign);
    QVERIFY(!store.open(foreign));
    QVERIFY2(store.errorString().contains(foreign), qPrintable(store.errorString()));
    QCOMPARE(fileBytes(foreign), foreignBytes);

    // A folder where the file should be.
    QVERIFY(!store.open(m_dir.path()));
    QVERIFY2(store.errorString().contains(m_dir.path()), qPrintable(store.errorString()));
}

void TestDictStore::unicodeSurvivesFileAndTmx()
{
    const QStringList languages{QStringLiteral("日本語"), QStringLiteral("Русский"), QStringLiteral("עברית"),
                                QStringLiteral("Emoji")};
    const QStringList texts{QStringLiteral("ファイルを開く"), QStringLiteral("Открыть файл"),
                            QStringLiteral("פתח קובץ"), QStringLiteral("📂 \U0001D49C <&>")};
    const QString file = path(QStringLiteral("unicode.sqlite"));
    {
        TvxDictionaryStore store;
        QVERIFY(store.open(file));
        for (int i = 1; i < languages.size(); ++i)
            store.addTranslation(languages.at(0), languages.at(i), texts.at(0), texts.at(i));
        QVERIFY(store.save());
        QVERIFY(Vexil::exportTmx(store, path(QStringLiteral("unicode.tmx")), nullptr));
    }
    TvxDictionaryStore store;
    QVERIFY(store.open(file));
    QCOMPARE(store.languages(), languages);
    QCOMPARE(store.getTranslation(QStringLiteral("עברית"), QStringLiteral("emoji"), texts.at(2)), texts.at(3));
    QCOMPARE(store.getTranslation(QStringLiteral("EMOJI"), QStringLiteral("русский"), texts.at(3)), texts.at(1));

    TvxDictionaryStore copy;
    QVERIFY(copy.open(path(QStringLiteral("unicode-copy.sqlite"))));
    QString error;
    QCOMPARE(Vexil::importTmx(copy, path(QStringLiteral("unicode.tmx")), &error), 1);
    QCOMPARE(copy.languages(), languages);
    QCOMPARE(copy.units().at(0).texts, texts);
}

void TestDictStore::browsingFiltersEditsAndDeletes()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("browse.sqlite"))));
    const QString en = QStringLiteral("EN"), ru = QStringLiteral("RU");
    store.addTranslation(en, ru, QStringLiteral("File"), QStringLiteral("Файл"));
    store.addTranslation(en, ru, QStringLiteral("Edit"), QStringLiteral("Правка"));
    store.addTranslation(en, ru, QStringLiteral("Profile"), QStringLiteral("Профиль"));
    QCOMPARE(store.unitCount(), 3);
    QCOMPARE(store.units().size(), 3);
    QCOMPARE(store.units().at(1).texts, (QStringList{QStringLiteral("Edit"), QStringLiteral("Правка")}));

    // Substring in any language, letter case ignored (Cyrillic too).
    QCOMPARE(store.units(QStringLiteral("FILE")).size(), 2);
    QCOMPARE(store.units(QStringLiteral("пРАВ")).size(), 1);
    QCOMPARE(store.units(QStringLiteral("nothing")).size(), 0);

    const qint64 edit = store.units(QStringLiteral("edit")).at(0).id;
    store.setSegment(edit, 1, QStringLiteral("Изменить"));
    QCOMPARE(store.getTranslation(en, ru, QStringLiteral("Edit")), QStringLiteral("Изменить"));
    // Emptying one text keeps the unit; emptying the last removes it.
    store.setSegment(edit, 0, QString());
    QCOMPARE(store.unitCount(), 3);
    QCOMPARE(store.getTranslation(en, ru, QStringLiteral("Edit")), QString());
    store.setSegment(edit, 1, QString());
    QCOMPARE(store.unitCount(), 2);
    QCOMPARE(errorKind([&] { store.setSegment(edit, 0, QStringLiteral("x")); }), int(EDictionaryError::ekArgument));
    QCOMPARE(errorKind([&] { store.setSegment(store.units().at(0).id, 5, QStringLiteral("x")); }),
             int(EDictionaryError::ekArgument));

    store.deleteUnit(store.units(QStringLiteral("Profile")).at(0).id);
    QCOMPARE(store.unitCount(), 1);
    QCOMPARE(store.getTranslation(ru, en, QStringLiteral("Профиль")), QString());
    QCOMPARE(store.getTranslation(ru, en, QStringLiteral("Файл")), QStringLiteral("File"));
}

void TestDictStore::tmxRoundTripMapsLanguageNamesToCodes()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("codes.sqlite"))));
    store.addTranslation(QStringLiteral("GERMAN"), QStringLiteral("English"), QStringLiteral("Haus"),
                         QStringLiteral("House"));
    store.addTranslation(QStringLiteral("GERMAN"), QStringLiteral("Klingon"), QStringLiteral("Haus"),
                         QStringLiteral("juH"));
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(Vexil::writeTmx(&buffer, store.languages(), store.units()));
    const QString xml = QString::fromUtf8(buffer.data());
    QVERIFY2(xml.contains(QRegularExpression(QStringLiteral("<tuv xml:lang=\"de\">\\s*<seg>Haus</seg>\\s*</tuv>"))),
             qPrintable(xml));
    QVERIFY(xml.contains(QLatin1String("xml:lang=\"en\"")));
    QVERIFY(xml.contains(QLatin1String("xml:lang=\"Klingon\"")));  // no code known: the name
    QVERIFY(xml.contains(QLatin1String("<tmx version=\"1.4\">")));
    QVERIFY(Vexil::exportTmx(store, path(QStringLiteral("codes.tmx")), nullptr));

    // Into a dictionary that knows the languages by name: the same languages.
    TvxDictionaryStore named;
    QVERIFY(named.open(path(QStringLiteral("named.sqlite"))));
    named.addLanguage(QStringLiteral("ENGLISH"));
    named.addLanguage(QStringLiteral("German"));
    QString error;
    QCOMPARE(Vexil::importTmx(named, path(QStringLiteral("codes.tmx")), &error), 1);
    QCOMPARE(named.languages(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("German"),
                                             QStringLiteral("Klingon")}));
    QCOMPARE(named.getTranslation(QStringLiteral("german"), QStringLiteral("english"), QStringLiteral("Haus")),
             QStringLiteral("House"));

    // Into an empty one: languages named by the codes.
    TvxDictionaryStore empty;
    QVERIFY(empty.open(path(QStringLiteral("empty.sqlite"))));
    QCOMPARE(Vexil::importTmx(empty, path(QStringLiteral("codes.tmx")), &error), 1);
    QCOMPARE(empty.languages(), (QStringList{QStringLiteral("de"), QStringLiteral("en"), QStringLiteral("Klingon")}));

    // Two languages that would share a code keep apart.
    TvxDictionaryStore both;
    QVERIFY(both.open(path(QStringLiteral("both.sqlite"))));
    both.addTranslation(QStringLiteral("German"), QStringLiteral("de"), QStringLiteral("Haus"), QStringLiteral("Heim"));
    QVERIFY(Vexil::exportTmx(both, path(QStringLiteral("both.tmx")), nullptr));
    TvxDictionaryStore back;
    QVERIFY(back.open(path(QStringLiteral("back.sqlite"))));
    QCOMPARE(Vexil::importTmx(back, path(QStringLiteral("both.tmx")), &error), 1);
    QCOMPARE(back.languages().size(), 2);
}

void TestDictStore::tmxImportMergesAndSkipsMarkup()
{
    const QString tmx = path(QStringLiteral("markup.tmx"));
    writeFile(tmx, R"(<?xml version="1.0" encoding="UTF-8"?>
<tmx version="1.4">
  <header creationtool="x" creationtoolversion="1" segtype="sentence" o-tmf="x" adminlang="en"
          srclang="en" datatype="plaintext"/>
  <body>
    <tu tuid="1">
      <prop type="x-note">not a text</prop>
      <tuv xml:lang="en"><seg>Press <bpt i="1">&lt;b&gt;</bpt>OK<ept i="1">&lt;/b&gt;</ept> &amp; go</seg></tuv>
      <tuv xml:lang="DE"><note>ignored</note><seg>Drücken Sie <hi>OK</hi> &amp; los</seg></tuv>
    </tu>
    <tu><tuv xml:lang="en"><seg>alone</seg></tuv></tu>
    <tu><tuv xml:lang="en"><seg>Yes</seg></tuv><tuv xml:lang="de"><seg></seg></tuv></tu>
    <tu><tuv lang="en"><seg>No</seg></tuv><tuv lang="de"><seg>Nein</seg></tuv></tu>
  </body>
</tmx>
)");
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("markup.sqlite"))));
    QString error;
    QCOMPARE(Vexil::importTmx(store, tmx, &error), 2);
    QCOMPARE(store.languages(), (QStringList{QStringLiteral("en"), QStringLiteral("DE")}));
    QCOMPARE(store.getTranslation(QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("Press OK & go")),
             QStringLiteral("Drücken Sie OK & los"));
    QCOMPARE(store.getTranslation(QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("No")),
             QStringLiteral("Nein"));
    // Importing again finds the units instead of adding them twice.
    QCOMPARE(Vexil::importTmx(store, tmx, &error), 2);
    QCOMPARE(store.unitCount(), 2);
}

void TestDictStore::damagedTmxImportsNothing()
{
    const QString tmx = path(QStringLiteral("broken.tmx"));
    writeFile(tmx, "<?xml version=\"1.0\"?>\n<tmx version=\"1.4\"><body>\n"
                   "<tu><tuv xml:lang=\"en\"><seg>One</seg></tuv><tuv xml:lang=\"de\"><seg>Eins</seg></tuv></tu>\n"
                   "<tu><tuv xml:lang=\"en\"><seg>Two</seg></tuv><tuv xml:lang=\"de\"><seg>Zwei</tuv></tu>\n"
                   "</body></tmx>\n");
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("broken.sqlite"))));
    store.addTranslation(QStringLiteral("EN"), QStringLiteral("FR"), QStringLiteral("One"), QStringLiteral("Un"));
    QString error;
    QCOMPARE(Vexil::importTmx(store, tmx, &error), -1);
    QVERIFY2(error.contains(QLatin1String("line 4")), qPrintable(error));
    QVERIFY2(error.contains(tmx), qPrintable(error));
    QCOMPARE(store.languages(), (QStringList{QStringLiteral("EN"), QStringLiteral("FR")}));
    QCOMPARE(store.unitCount(), 1);
    QCOMPARE(store.getTranslation(QStringLiteral("EN"), QStringLiteral("DE"), QStringLiteral("One")), QString());

    // Well-formed but refused: a tuv without a language, a text too long, not TMX.
    const QByteArray cases[] = {
        "<tmx><body>\n<tu><tuv><seg>x</seg></tuv></tu></body></tmx>",
        "<tmx><body>\n<tu><tuv xml:lang=\"en\"><seg>a</seg></tuv><tuv xml:lang=\"de\"><seg>"
            + longText.toUtf8() + "</seg></tuv></tu></body></tmx>",
        "<html>\n<body/></html>",
        "",
    };
    for (const QByteArray &bytes : cases) {
        writeFile(tmx, bytes);
        error.clear();
        QCOMPARE(Vexil::importTmx(store, tmx, &error), -1);
        QVERIFY2(error.contains(QLatin1String("line ")), qPrintable(error));
        QCOMPARE(store.unitCount(), 1);
        QCOMPARE(store.languages().size(), 2);
    }
    QCOMPARE(Vexil::importTmx(store, path(QStringLiteral("no-such.tmx")), &error), -1);
    QVERIFY(error.contains(QLatin1String("no-such.tmx")));
}

QTEST_GUILESS_MAIN(TestDictStore)
#include "tst_dictstore.moc"
