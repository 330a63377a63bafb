// The INI store: parsing and case rules, typed values, the whole-file text,
// encodings and safe writing.
#include "memini.h"
#include "vxcomp.h"
#include "vxerrors.h"
#include "vxlocalesettings.h"

#include <QtTest>

class TstMemIni : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_file = m_dir.filePath(QStringLiteral("test.ini")); QFile::remove(m_file); }
    void parsingRules();
    void readsAndWritesKeepFirstMatch();
    void deletionsKeepFirstMatch();
    void typedValues();
    void typedValuesFollowLocaleSettings_data();
    void typedValuesFollowLocaleSettings();
    void typedValuesFollowLanguageSwitch();
    void localeFormatsFromSystemLocale();
    void cleanup() { TvxLocaleSettings::instance()->resetFromSystem(); }
    void wholeText();
    void renameReloadsFromFirstName();
    void encodings();
    void writeIsAtomic();
    void largeFile();

private:
    void write(const QByteArray &bytes)
    {
        QFile f(m_file);
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }
    QByteArray read()
    {
        QFile f(m_file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QTemporaryDir m_dir;
    QString m_file;
};

void TstMemIni::parsingRules()
{
    write("before=dropped\n; a comment\n[A]\nKey = Value \n\n[A] \nnot=a header\n[Empty]\n[B]\nnoequals\n");
    TMemIniFile ini(m_file);
    QStringList sections;
    ini.ReadSections(sections);
    QCOMPARE(sections, (QStringList{QStringLiteral("A"), QStringLiteral("Empty"), QStringLiteral("B")}));
    // Nothing is trimmed, and "[A] " is a plain line of section A.
    QCOMPARE(ini.ReadString(QStringLiteral("a"), QStringLiteral("Key "), QString()), QStringLiteral(" Value "));
    QCOMPARE(ini.ReadString(QStringLiteral("A"), QStringLiteral("Key"), QStringLiteral("def")), QStringLiteral("def"));
    QStringList names;
    ini.ReadSection(QStringLiteral("A"), names);
    QCOMPARE(names, (QStringList{QStringLiteral("Key "), QString(), QStringLiteral("not")}));
    ini.ReadSection(QStringLiteral("B"), names);
    QCOMPARE(names, QStringList{QString()});
    QVERIFY(!ini.SectionExists(QStringLiteral("Empty")));
    QVERIFY(ini.SectionExists(QStringLiteral("b")));
    QVERIFY(ini.ValueExists(QStringLiteral("A"), QStringLiteral("NOT")));
    QVERIFY(!ini.ValueExists(QStringLiteral("Missing"), QStringLiteral("x")));
}

void TstMemIni::readsAndWritesKeepFirstMatch()
{
    write("[S]\nk=1\nK=2\n[s]\nk=3\n");
    TMemIniFile ini(m_file);
    QCOMPARE(ini.ReadString(QStringLiteral("S"), QStringLiteral("K"), QString()), QStringLiteral("1"));
    ini.WriteString(QStringLiteral("s"), QStringLiteral("K"), QStringLiteral("new"));
    QStringList values;
    ini.ReadSectionValues(QStringLiteral("S"), values);
    QCOMPARE(values, (QStringList{QStringLiteral("K=new"), QStringLiteral("K=2")}));
    ini.DeleteKey(QStringLiteral("S"), QStringLiteral("k"));
    QCOMPARE(ini.ReadString(QStringLiteral("S"), QStringLiteral("k"), QString()), QStringLiteral("2"));
    ini.WriteString(QStringLiteral("S"), QStringLiteral("added"), QStringLiteral("a=b"));
    QCOMPARE(ini.ReadString(QStringLiteral("S"), QStringLiteral("ADDED"), QString()), QStringLiteral("a=b"));
    ini.EraseSection(QStringLiteral("S"));
    // The second section of that name is reachable now.
    QCOMPARE(ini.ReadString(QStringLiteral("S"), QStringLiteral("k"), QString()), QStringLiteral("3"));
    ini.WriteString(QStringLiteral("New"), QStringLiteral("x"), QStringLiteral("1"));
    QStringList sections;
    ini.ReadSections(sections);
    QCOMPARE(sections, (QStringList{QStringLiteral("s"), QStringLiteral("New")}));
}

void TstMemIni::deletionsKeepFirstMatch()
{
    // Every key three times, in three rounds; deleting walks through the
    // duplicates in file order, whatever the spelling asked with.
    QByteArray bytes("[S]\n");
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 40; ++i)
            bytes += "Key" + QByteArray::number(i) + "=" + QByteArray::number(round) + "\n";
    }
    write(bytes);
    TMemIniFile ini(m_file);
    const auto value = [&](int i) { return ini.ReadString(QStringLiteral("S"), QStringLiteral("key%1").arg(i), QStringLiteral("-")); };
    QCOMPARE(value(5), QStringLiteral("0"));
    QCOMPARE(ini.ReadString(QStringLiteral("S"), QStringLiteral("Key5"), QString()), QStringLiteral("0"));
    for (int i = 0; i < 40; i += 2)
        ini.DeleteKey(QStringLiteral("S"), QStringLiteral("KEY%1").arg(i));
    QCOMPARE(value(4), QStringLiteral("1"));
    QCOMPARE(ini.ReadString(QStringLiteral("S"), QStringLiteral("Key4"), QString()), QStringLiteral("1"));
    QCOMPARE(value(5), QStringLiteral("0"));
    ini.WriteString(QStringLiteral("S"), QStringLiteral("key4"), QStringLiteral("w"));
    for (int i = 0; i < 40; ++i)
        ini.DeleteKey(QStringLiteral("S"), QStringLiteral("Key%1").arg(i));
    QCOMPARE(value(4), QStringLiteral("2"));
    QCOMPARE(value(5), QStringLiteral("1"));
    QStringList values;
    ini.ReadSectionValues(QStringLiteral("S"), values);
    QCOMPARE(values.size(), 60);
    QCOMPARE(values.first(), QStringLiteral("Key1=1"));
    QCOMPARE(values.at(19), QStringLiteral("Key39=1"));
    QCOMPARE(values.at(20), QStringLiteral("Key0=2"));
    // Deleting the last line of a name and writing it again appends it.
    for (int round = 0; round < 2; ++round)
        ini.DeleteKey(QStringLiteral("S"), QStringLiteral("Key1"));
    QCOMPARE(value(1), QStringLiteral("-"));
    ini.DeleteKey(QStringLiteral("S"), QStringLiteral("Key1")); // no effect
    ini.WriteString(QStringLiteral("S"), QStringLiteral("KEY1"), QStringLiteral("back"));
    QCOMPARE(value(1), QStringLiteral("back"));
    QStringList names;
    ini.ReadSection(QStringLiteral("S"), names);
    QCOMPARE(names.size(), 59);
    QCOMPARE(names.last(), QStringLiteral("KEY1"));
    QStringList text;
    ini.GetStrings(text);
    QCOMPARE(text.size(), 59 + 2);
    QCOMPARE(text.indexOf(QString()), 60); // no deleted line shows
    // A section whose lines are all deleted counts as absent.
    for (const QString &name : std::as_const(names))
        ini.DeleteKey(QStringLiteral("S"), name);
    QVERIFY(!ini.SectionExists(QStringLiteral("S")));
    ini.WriteString(QStringLiteral("S"), QStringLiteral("Key2"), QStringLiteral("new"));
    QCOMPARE(value(2), QStringLiteral("new"));
}

void TstMemIni::typedValues()
{
    TMemIniFile ini(m_file);
    ini.WriteString(QStringLiteral("T"), QStringLiteral("hex"), QStringLiteral("0x1F"));
    ini.WriteString(QStringLiteral("T"), QStringLiteral("short"), QStringLiteral("0x"));
    ini.WriteString(QStringLiteral("T"), QStringLiteral("bad"), QStringLiteral("12a"));
    ini.WriteInteger(QStringLiteral("T"), QStringLiteral("int"), -42);
    ini.WriteBool(QStringLiteral("T"), QStringLiteral("bool"), true);
    ini.WriteFloat(QStringLiteral("T"), QStringLiteral("float"), 2.5);
    ini.WriteDate(QStringLiteral("T"), QStringLiteral("date"), QDate(2026, 11, 22));
    QCOMPARE(ini.ReadInteger(QStringLiteral("T"), QStringLiteral("hex"), 0), 31);
    QCOMPARE(ini.ReadInteger(QStringLiteral("T"), QStringLiteral("short"), 7), 7);
    QCOMPARE(ini.ReadInteger(QStringLiteral("T"), QStringLiteral("bad"), 7), 7);
    QCOMPARE(ini.ReadInteger(QStringLiteral("T"), QStringLiteral("int"), 0), -42);
    QCOMPARE(ini.ReadString(QStringLiteral("T"), QStringLiteral("bool"), QString()), QStringLiteral("1"));
    QVERIFY(ini.ReadBool(QStringLiteral("T"), QStringLiteral("bool"), false));
    QVERIFY(ini.ReadBool(QStringLiteral("T"), QStringLiteral("missing"), true));
    QCOMPARE(ini.ReadFloat(QStringLiteral("T"), QStringLiteral("float"), 0), 2.5);
    QCOMPARE(ini.ReadFloat(QStringLiteral("T"), QStringLiteral("bad"), 1.5), 1.5);
    QCOMPARE(ini.ReadDate(QStringLiteral("T"), QStringLiteral("date"), QDate()).month(), 11);
    QCOMPARE(ini.ReadDate(QStringLiteral("T"), QStringLiteral("bad"), QDate(2000, 1, 1)), QDate(2000, 1, 1));
    QCOMPARE(ini.ReadTime(QStringLiteral("T"), QStringLiteral("missing"), QTime(1, 2)), QTime(1, 2));
}

// Every kind of typed value reads back as written, under the settings of
// many locales and under settings a translation might bring.
void TstMemIni::typedValuesFollowLocaleSettings_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QStringList>("overrides"); // item number, value, ...
    for (const char *name : {"en_US", "de_DE", "en_GB", "fr_FR", "ja_JP", "zh_CN", "ko_KR", "ru_RU", "ar_EG",
                             "hi_IN", "es_ES", "nl_NL", "fa_IR", "he_IL", "C"})
        QTest::newRow(name) << QLocale(QLatin1String(name)) << QStringList();
    using S = TvxLocaleSettings;
    const auto item = [](S::Item i) { return QString::number(int(i)); };
    QTest::newRow("iso, comma") << QLocale(QLocale::C)
                                << QStringList{item(S::ShortDateFormat), QStringLiteral("yyyy-mm-dd"),
                                               item(S::DateSeparator), QStringLiteral("."),
                                               item(S::DecimalSeparator), QStringLiteral(",")};
    QTest::newRow("two-digit year, am/pm") << QLocale(QLocale::C)
                                           << QStringList{item(S::ShortDateFormat), QStringLiteral("d/m/yy"),
                                                          item(S::DateSeparator), QStringLiteral("-"),
                                                          item(S::LongTimeFormat), QStringLiteral("hh:nn:ss ampm"),
                                                          item(S::TimeAMString), QStringLiteral("vorm."),
                                                          item(S::TimePMString), QStringLiteral("nachm.")};
    QTest::newRow("month names, no seconds")
        << QLocale(QLocale::C)
        << QStringList{item(S::ShortDateFormat), QStringLiteral("dddd, d. mmmm yyyy"),
                       item(S::LongTimeFormat), QStringLiteral("h 'Uhr' mm"), item(S::TimeSeparator),
                       QStringLiteral(".")};
    QTest::newRow("fields side by side") << QLocale(QLocale::C)
                                         << QStringList{item(S::ShortDateFormat), QStringLiteral("yyyymmdd"),
                                                        item(S::LongTimeFormat), QStringLiteral("hhnnss")};
    QTest::newRow("no usable formats") << QLocale(QLocale::C)
                                       << QStringList{item(S::ShortDateFormat), QStringLiteral("mmmm"),
                                                      item(S::LongTimeFormat), QString(),
                                                      item(S::DecimalSeparator), QString()};
}

void TstMemIni::typedValuesFollowLocaleSettings()
{
    QFETCH(QLocale, locale);
    QFETCH(QStringList, overrides);
    TvxLocaleSettings *settings = TvxLocaleSettings::instance();
    settings->resetFrom(locale);
    for (int i = 0; i + 1 < overrides.size(); i += 2)
        settings->setValue(TvxLocaleSettings::Item(overrides.at(i).toInt()), overrides.at(i + 1));

    TMemIniFile ini(m_file);
    const QString s = QStringLiteral("T");
    const QList<QDate> dates = {QDate(2024, 3, 9), QDate(1924, 12, 31), QDate(2075, 1, 1), QDate(1999, 11, 30)};
    const QList<QTime> times = {QTime(13, 45, 30), QTime(0, 0, 1), QTime(12, 0, 0), QTime(23, 59, 59)};
    const QList<double> numbers = {2.5, -0.125, 1234567.75, 1e-7, 3e20, 0.1};
    for (int i = 0; i < dates.size(); ++i) {
        ini.WriteDate(s, QStringLiteral("date"), dates.at(i));
        QCOMPARE(ini.ReadDate(s, QStringLiteral("date"), QDate()), dates.at(i));
        ini.WriteTime(s, QStringLiteral("time"), times.at(i));
        QCOMPARE(ini.ReadTime(s, QStringLiteral("time"), QTime()), times.at(i));
        const QDateTime when(dates.at(i), times.at(i));
        ini.WriteDateTime(s, QStringLiteral("when"), when);
        QCOMPARE(ini.ReadDateTime(s, QStringLiteral("when"), QDateTime()), when);
    }
    for (double number : numbers) {
        ini.WriteFloat(s, QStringLiteral("float"), number);
        QCOMPARE(ini.ReadFloat(s, QStringLiteral("float"), 0), number);
    }
    // A date alone reads as a date and time at midnight; junk gives the default.
    ini.WriteDate(s, QStringLiteral("date"), QDate(2024, 3, 9));
    QCOMPARE(ini.ReadDateTime(s, QStringLiteral("date"), QDateTime()), QDateTime(QDate(2024, 3, 9), QTime(0, 0)));
    const QDate fallback(2000, 1, 1);
    for (const char *junk : {"junk", "1", "99/99/99/99", "2024"}) {
        ini.WriteString(s, QStringLiteral("bad"), QLatin1String(junk));
        QCOMPARE(ini.ReadDate(s, QStringLiteral("bad"), fallback), fallback);
        QCOMPARE(ini.ReadDateTime(s, QStringLiteral("bad"), QDateTime(fallback, QTime(1, 2))), QDateTime(fallback, QTime(1, 2)));
    }
    ini.WriteString(s, QStringLiteral("bad"), QStringLiteral("25:99"));
    QCOMPARE(ini.ReadTime(s, QStringLiteral("bad"), QTime(1, 2)), QTime(1, 2));
}

// A language switch that brings other locale settings changes the text
// form of values written after it, and they read back.
void TstMemIni::typedValuesFollowLanguageSwitch()
{
    TvxLocaleSettings *settings = TvxLocaleSettings::instance();
    settings->resetFrom(QLocale(QStringLiteral("en_US")));
    QWidget form;
    TVexil vx(&form);
    vx.Loaded();
    vx.SetNumLang(2);
    const QStringList german = {QStringLiteral("EUR"), QStringLiteral("."), QStringLiteral(","),
                                QStringLiteral("."), QStringLiteral("dd/mm/yyyy"), QStringLiteral("dddd, d. mmmm yyyy"),
                                QStringLiteral(":"), QString(), QString(), QStringLiteral("hh:nn"),
                                QStringLiteral("hh:nn:ss")};
    for (int i = 0; i < german.size(); ++i) {
        const QString line = vx.Locales()->at(i);
        vx.Locales()->replace(i, line.section(QLatin1Char('\t'), 0, 1) + QLatin1Char('\t') + german.at(i) + QLatin1Char('\t'));
    }
    vx.SetChangeLocales(true);

    TMemIniFile ini(m_file);
    const QString s = QStringLiteral("T");
    ini.WriteFloat(s, QStringLiteral("before"), 2.5);
    QCOMPARE(ini.ReadString(s, QStringLiteral("before"), QString()), QStringLiteral("2.5"));
    vx.SetActLang(2);
    QCOMPARE(settings->value(TvxLocaleSettings::DecimalSeparator), QStringLiteral(","));
    ini.WriteFloat(s, QStringLiteral("float"), 2.5);
    QCOMPARE(ini.ReadString(s, QStringLiteral("float"), QString()), QStringLiteral("2,5"));
    QCOMPARE(ini.ReadFloat(s, QStringLiteral("float"), 0), 2.5);
    QCOMPARE(ini.ReadFloat(s, QStringLiteral("before"), 0), 2.5); // a point still reads
    ini.WriteDate(s, QStringLiteral("date"), QDate(2024, 1, 2));
    QCOMPARE(ini.ReadString(s, QStringLiteral("date"), QString()), QStringLiteral("02.01.2024"));
    QCOMPARE(ini.ReadDate(s, QStringLiteral("date"), QDate()), QDate(2024, 1, 2));
    ini.WriteDateTime(s, QStringLiteral("when"), QDateTime(QDate(2024, 1, 2), QTime(13, 45, 30)));
    QCOMPARE(ini.ReadString(s, QStringLiteral("when"), QString()), QStringLiteral("02.01.2024 13:45:30"));
    QCOMPARE(ini.ReadDateTime(s, QStringLiteral("when"), QDateTime()), QDateTime(QDate(2024, 1, 2), QTime(13, 45, 30)));
}

// Formats taken from a locale are in the suite's notation, without the
// locale's time zone or the blank before it.
void TstMemIni::localeFormatsFromSystemLocale()
{
    TvxLocaleSettings *settings = TvxLocaleSettings::instance();
    settings->resetFrom(QLocale(QStringLiteral("de_DE")));
    QCOMPARE(settings->value(TvxLocaleSettings::LongTimeFormat), QStringLiteral("HH:nn:ss"));
    QCOMPARE(settings->value(TvxLocaleSettings::DecimalSeparator), QStringLiteral(","));
    settings->resetFrom(QLocale(QStringLiteral("en_US")));
    QCOMPARE(settings->value(TvxLocaleSettings::LongTimeFormat), QStringLiteral("h:nn:ss ampm"));
    for (const char *name : {"en_US", "de_DE", "fr_FR", "ja_JP", "zh_CN", "ko_KR", "ar_EG", "hi_IN", "fa_IR"}) {
        settings->resetFrom(QLocale(QLatin1String(name)));
        for (auto item : {TvxLocaleSettings::ShortTimeFormat, TvxLocaleSettings::LongTimeFormat}) {
            const QString format = settings->value(item);
            QVERIFY2(format == format.trimmed() && !format.contains(QLatin1Char('t')),
                     qPrintable(QLatin1String(name) + QLatin1String(": ") + format));
        }
    }
    // The suite's notation: minutes are "n", "/" and ":" stand for the separators.
    settings->setValue(TvxLocaleSettings::DateSeparator, QStringLiteral("-"));
    QCOMPARE(settings->formatDateTime(QStringLiteral("yyyy/mm/dd hh:nn:ss.zzz \"at\" h:mm am/pm"),
                                      QDateTime(QDate(2024, 3, 9), QTime(15, 4, 5, 6))),
             QStringLiteral("2024-03-09 03:04:05.006 at 3:04 pm")); // am/pm anywhere: a 12-hour clock
    QCOMPARE(settings->formatDateTime(QStringLiteral("d/m/yy A/P"), QDateTime(QDate(2024, 3, 9), QTime(9, 0))),
             QStringLiteral("9-3-24 A"));
}

void TstMemIni::wholeText()
{
    TMemIniFile ini(m_file);
    ini.WriteString(QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("v"));
    ini.WriteString(QStringLiteral("B"), QStringLiteral("x"), QStringLiteral("y"));
    QStringList text{QStringLiteral("kept")};
    ini.GetStrings(text); // appends
    QCOMPARE(text, (QStringList{QStringLiteral("kept"), QStringLiteral("[A]"), QStringLiteral("k=v"), QString(),
                                QStringLiteral("[B]"), QStringLiteral("x=y"), QString()}));
    ini.SetStrings({QStringLiteral("[C]"), QStringLiteral("c=1")});
    QCOMPARE(ini.ReadString(QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("gone")), QStringLiteral("gone"));
    ini.UpdateFile();
    QCOMPARE(read(), QByteArray("[C]\nc=1\n\n"));
    ini.Clear();
    QVERIFY(ini.isModified());
    QStringList sections;
    ini.ReadSections(sections);
    QVERIFY(sections.isEmpty());
}

void TstMemIni::renameReloadsFromFirstName()
{
    write("[A]\nk=original\n");
    TMemIniFile ini(m_file);
    ini.WriteString(QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("changed"));
    const QString other = m_dir.filePath(QStringLiteral("other.ini"));
    ini.Rename(other, true); // reloads from the first name
    QCOMPARE(ini.ReadString(QStringLiteral("A"), QStringLiteral("k"), QString()), QStringLiteral("original"));
    ini.UpdateFile(); // but writes to the new one
    QCOMPARE(read(), QByteArray("[A]\nk=original\n"));
    QFile f(other);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), QByteArray("[A]\nk=original\n\n"));
    QCOMPARE(ini.FileName(), m_file);
}

void TstMemIni::encodings()
{
    write("\xEF\xBB\xBF[U]\r\nru=\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82\r\nja=\xE6\x97\xA5\xE6\x9C\xAC\r\n");
    {
        TMemIniFile ini(m_file);
        QCOMPARE(ini.ReadString(QStringLiteral("U"), QStringLiteral("ru"), QString()), QStringLiteral("Привет"));
        QCOMPARE(ini.ReadString(QStringLiteral("U"), QStringLiteral("ja"), QString()), QStringLiteral("日本"));
    }
    // Not UTF-8: a single-byte Windows file, written back as UTF-8.
    write("[L]\nde=Gr\xF6\xDF" "e\neuro=\x80 5\n");
    TMemIniFile legacy(m_file);
    QCOMPARE(legacy.ReadString(QStringLiteral("L"), QStringLiteral("de"), QString()), QStringLiteral("Größe"));
    QCOMPARE(legacy.ReadString(QStringLiteral("L"), QStringLiteral("euro"), QString()), QStringLiteral("€ 5"));
    legacy.UpdateFile();
    QCOMPARE(read(), QByteArray("[L]\nde=Gr\xC3\xB6\xC3\x9F" "e\neuro=\xE2\x82\xAC 5\n\n"));

    // Binary garbage with NUL bytes loads into something defined.
    QByteArray garbage("[G]\nk=");
    for (int i = 0; i < 512; ++i)
        garbage.append(char(i));
    write(garbage);
    TMemIniFile junk(m_file);
    QVERIFY(junk.ReadString(QStringLiteral("G"), QStringLiteral("k"), QString()).size() > 0);
}

void TstMemIni::writeIsAtomic()
{
    write("[A]\nk=old\n");
    const QString dir = m_dir.filePath(QStringLiteral("sub"));
    QVERIFY(QDir().mkpath(dir));
    QVERIFY_THROWS_EXCEPTION(EVexilError, TMemIniFile{dir}); // reading a directory fails loudly
    TMemIniFile ini(m_dir.filePath(QStringLiteral("fresh.ini")));
    ini.Rename(dir, false); // and a directory cannot be replaced by a file
    ini.WriteString(QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("new"));
    QVERIFY_THROWS_EXCEPTION(EVexilError, ini.UpdateFile());
    QVERIFY(QFileInfo(dir).isDir());
    QVERIFY(ini.isModified());

    TMemIniFile good(m_file);
    good.Rename(m_dir.filePath(QStringLiteral("missing/dir/file.ini")), false);
    QVERIFY_THROWS_EXCEPTION(EVexilError, good.UpdateFile());
    QCOMPARE(read(), QByteArray("[A]\nk=old\n"));
}

void TstMemIni::largeFile()
{
    QByteArray bytes("[Big]\n");
    for (int i = 0; i < 100000; ++i)
        bytes += "key" + QByteArray::number(i) + "=value " + QByteArray::number(i) + "\n";
    bytes += "[Tail]\nlong=" + QByteArray(1 << 20, 'x') + "\n";
    write(bytes);
    TMemIniFile ini(m_file);
    QCOMPARE(ini.ReadString(QStringLiteral("big"), QStringLiteral("KEY99999"), QString()), QStringLiteral("value 99999"));
    for (int i = 0; i < 100000; i += 7)
        ini.WriteString(QStringLiteral("Big"), QStringLiteral("key%1").arg(i), QStringLiteral("w"));
    ini.WriteString(QStringLiteral("Big"), QStringLiteral("extra"), QStringLiteral("e"));
    QCOMPARE(ini.ReadString(QStringLiteral("Big"), QStringLiteral("key7"), QString()), QStringLiteral("w"));
    QCOMPARE(ini.ReadString(QStringLiteral("Big"), QStringLiteral("extra"), QString()), QStringLiteral("e"));
    QCOMPARE(ini.ReadString(QStringLiteral("Tail"), QStringLiteral("long"), QString()).size(), 1 << 20);
    ini.UpdateFile();
    TMemIniFile again(m_file);
    QStringList names;
    again.ReadSection(QStringLiteral("Big"), names);
    QCOMPARE(names.size(), 100001);
}

QTEST_MAIN(TstMemIni)
#include "tst_memini.moc"
