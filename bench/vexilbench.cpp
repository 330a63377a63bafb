// Measures the translation engine against Qt's own translation path on the
// same synthetic forms and prints its figures last, one per line as
// "name: value". Times are medians of several repetitions, in milliseconds.
//
//   vexil-bench [--quick] [--only group]

#include "memini.h"
#include "vxcomp.h"
#include "vxdictionaryclient.h"
#include "vxdictionarycommands.h"
#include "vxdlgform.h"
#include "vxgridmodel.h"
#include "vxvexiltlv.h"
#include "vxsourcescan.h"
#include "vxunitfile.h"
#include "vxfileformat.h"
#include "vximport.h"
#include "vxtsformat.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSettings>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtCore/QTranslator>
#include <QtGui/QAction>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

const char *const context = "BenchForm";

QString englishText(int i) { return QStringLiteral("Text number %1").arg(i); }
QString translatedText(int lang, int i) { return QStringLiteral("L%1 text number %2").arg(lang).arg(i); }

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

double timeMs(const std::function<void()> &f)
{
    QElapsedTimer t;
    t.start();
    f();
    return t.nsecsElapsed() / 1e6;
}

/// A form of @p n widgets: buttons, labels and actions with tool tips.
class BenchForm : public QWidget
{
public:
    explicit BenchForm(int n)
    {
        for (int i = 0; i < n; ++i) {
            QObject *o;
            switch (i % 3) {
            case 0: {
                auto *b = new QPushButton(englishText(i), this);
                b->setToolTip(englishText(i));
                o = b;
                break;
            }
            case 1:
                o = new QLabel(englishText(i), this);
                break;
            default: {
                auto *a = new QAction(englishText(i), this);
                a->setToolTip(englishText(i));
                o = a;
                break;
            }
            }
            o->setObjectName(QStringLiteral("c%1").arg(i));
            objects.push_back(o);
        }
    }

    // What uic's retranslateUi() does: every text again through tr.
    void retranslate()
    {
        for (size_t i = 0; i < objects.size(); ++i) {
            const QByteArray source = englishText(int(i)).toUtf8();
            const QString text = QCoreApplication::translate(context, source.constData());
            if (auto *b = qobject_cast<QPushButton *>(objects[i])) {
                b->setText(text);
                b->setToolTip(text);
            } else if (auto *l = qobject_cast<QLabel *>(objects[i])) {
                l->setText(text);
            } else if (auto *a = qobject_cast<QAction *>(objects[i])) {
                a->setText(text);
                a->setToolTip(text);
            }
        }
    }

    std::vector<QObject *> objects;
};

// Gives every caption and hint line of @p vx texts for languages 2 and 3.
void fillTranslations(TVexil &vx)
{
    for (TvxStringList *list : {vx.Captions(), vx.Hints()}) {
        QStringList lines = list->lines();
        for (QString &line : lines) {
            const QString key = line.section(QLatin1Char('\t'), 0, 0);
            const QString text = line.section(QLatin1Char('\t'), 1, 1);
            const int i = text.section(QLatin1Char(' '), 2, 2).toInt();
            line = key + QLatin1Char('\t') + text + QLatin1Char('\t') + translatedText(2, i) + QLatin1Char('\t')
                + translatedText(3, i) + QLatin1Char('\t');
        }
        list->setLines(lines);
    }
}

QString lreleasePath()
{
#ifdef VEXIL_LRELEASE
    return QStringLiteral(VEXIL_LRELEASE);
#else
    return QStringLiteral("lrelease");
#endif
}

// Writes a .ts for language @p lang with @p n messages and compiles it.
QString makeQm(const QDir &dir, int lang, int n, const std::function<QString(int)> &source,
               const std::function<QString(int)> &translation)
{
    const QString ts = dir.filePath(QStringLiteral("bench_%1_%2.ts").arg(lang).arg(n));
    QFile f(ts);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qPrintable(ts));
    QString xml = QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
                                 "<TS version=\"2.1\" language=\"de\">\n<context>\n<name>%1</name>\n")
                      .arg(QLatin1String(context));
    for (int i = 0; i < n; ++i) {
        xml += QStringLiteral("<message><source>%1</source><translation>%2</translation></message>\n")
                   .arg(source(i).toHtmlEscaped(), translation(i).toHtmlEscaped());
    }
    xml += QStringLiteral("</context>\n</TS>\n");
    f.write(xml.toUtf8());
    f.close();
    const QString qm = dir.filePath(QStringLiteral("bench_%1_%2.qm").arg(lang).arg(n));
    QProcess p;
    p.start(lreleasePath(), {QStringLiteral("-silent"), ts, QStringLiteral("-qm"), qm});
    if (!p.waitForFinished(120000) || p.exitCode() != 0)
        qFatal("lrelease failed: %s", p.readAllStandardError().constData());
    return qm;
}

struct Figures
{
    QList<QPair<QString, QString>> lines;
    void add(const QString &name, double value) { lines.append({name, QString::number(value, 'f', 3)}); }
};

void benchSwitch(Figures &out, const QDir &dir, int n, int reps)
{
    BenchForm form(n);
    TVexil vx(&form);
    vx.Loaded();
    vx.SetNumLang(3);
    vx.BuildList();
    fillTranslations(vx);

    // Every switch must really have written the texts: checked outside the timing.
    auto check = [&form](int lang) {
        for (size_t i = 0; i < form.objects.size(); i += 97) {
            const QString expected = lang == 1 ? englishText(int(i)) : translatedText(lang, int(i));
            if (form.objects[i]->property("text").toString() != expected)
                qFatal("switch to language %d left %s", lang, qPrintable(form.objects[i]->objectName()));
        }
    };
    std::vector<double> ours;
    for (int r = 0; r < reps; ++r) {
        ours.push_back(timeMs([&] { vx.SetActLang(2); }));
        check(2);
        ours.push_back(timeMs([&] { vx.SetActLang(3); }));
        check(3);
        vx.SetActLang(1);
        check(1);
    }

    // Qt's path on a twin form: load the language's .qm, install it, retranslate.
    BenchForm twin(n);
    QTranslator tr2, tr3;
    const QString qm2 = makeQm(dir, 2, n, englishText, [](int i) { return translatedText(2, i); });
    const QString qm3 = makeQm(dir, 3, n, englishText, [](int i) { return translatedText(3, i); });
    if (!tr2.load(qm2) || !tr3.load(qm3))
        qFatal("cannot load the .qm files");
    std::vector<double> qt;
    for (int r = 0; r < reps; ++r) {
        for (QTranslator *t : {&tr2, &tr3}) {
            qt.push_back(timeMs([&] {
                QCoreApplication::installTranslator(t);
                twin.retranslate();
            }));
            if (twin.objects[3]->property("text").toString() != translatedText(t == &tr2 ? 2 : 3, 3))
                qFatal("the translator did not translate");
            QCoreApplication::removeTranslator(t);
        }
    }
    // The floor on a third twin: the same texts written straight into the
    // same widgets with their own setters, nothing looked up or compared.
    BenchForm floorForm(n);
    std::vector<std::vector<QString>> texts(4);
    for (int lang = 1; lang <= 3; ++lang) {
        for (int i = 0; i < n; ++i)
            texts[lang].push_back(lang == 1 ? englishText(i) : translatedText(lang, i));
    }
    auto writeAll = [&floorForm](const std::vector<QString> &t) {
        for (size_t i = 0; i < floorForm.objects.size(); ++i) {
            QObject *o = floorForm.objects[i];
            if (auto *b = qobject_cast<QPushButton *>(o)) {
                b->setText(t[i]);
                b->setToolTip(t[i]);
            } else if (auto *l = qobject_cast<QLabel *>(o)) {
                l->setText(t[i]);
            } else if (auto *a = qobject_cast<QAction *>(o)) {
                a->setText(t[i]);
                a->setToolTip(t[i]);
            }
        }
    };
    std::vector<double> floor;
    for (int r = 0; r < reps; ++r) {
        floor.push_back(timeMs([&] { writeAll(texts[2]); }));
        floor.push_back(timeMs([&] { writeAll(texts[3]); }));
        writeAll(texts[1]);
    }
    if (floorForm.objects[3]->property("text").toString() != englishText(3))
        qFatal("the floor did not write");

    const double o = median(ours), q = median(qt), f = median(floor);
    out.add(QStringLiteral("switch_%1_ms").arg(n), o);
    out.add(QStringLiteral("switch_qt_%1_ms").arg(n), q);
    out.add(QStringLiteral("switch_floor_%1_ms").arg(n), f);
    out.add(QStringLiteral("switch_vs_qt"), o / q);
    out.add(QStringLiteral("switch_vs_floor"), o / f);
}

void benchGetText(Figures &out, const QDir &dir, const QList<int> &sizes, int reps)
{
    double ratioAtLargest = 0;
    for (int n : sizes) {
        TVexil vx;
        vx.SetNumLang(3);
        QStringList lines;
        lines.reserve(n);
        for (int i = 0; i < n; ++i)
            lines << QStringLiteral("IDS_%1\t%2\t%3\t%4\t").arg(i).arg(englishText(i), translatedText(2, i), translatedText(3, i));
        vx.Strings()->setLines(lines);
        vx.SetActLang(2);

        std::vector<int> order(n);
        for (int i = 0; i < n; ++i)
            order[i] = i;
        std::shuffle(order.begin(), order.end(), std::mt19937(42));
        QStringList ids;
        std::vector<QByteArray> sources;
        for (int i : order) {
            ids << QStringLiteral("IDS_%1").arg(i);
            sources.push_back(englishText(i).toUtf8());
        }

        QTranslator tr;
        if (!tr.load(makeQm(dir, 2, n, englishText, [](int i) { return translatedText(2, i); })))
            qFatal("cannot load the .qm file");

        vx.GetText(ids.first()); // the index is built on first use, as in any program
        std::vector<double> ours, qt;
        qsizetype sink = 0;
        for (int r = 0; r < reps; ++r) {
            ours.push_back(timeMs([&] {
                for (const QString &id : std::as_const(ids))
                    sink += vx.GetText(id).size();
            }));
            qt.push_back(timeMs([&] {
                for (const QByteArray &s : sources)
                    sink += tr.translate(context, s.constData()).size();
            }));
        }
        if (sink == 42)
            std::puts("");
        const double o = median(ours), q = median(qt);
        out.add(QStringLiteral("gettext_%1_ms").arg(n), o);
        out.add(QStringLiteral("gettext_qt_%1_ms").arg(n), q);
        ratioAtLargest = o / q;
    }
    out.add(QStringLiteral("gettext_vs_qt"), ratioAtLargest);
}

double buildListMs(int n, int reps)
{
    std::vector<double> t;
    for (int r = -1; r < reps; ++r) { // round -1 warms up and is not counted
        BenchForm form(n);
        TVexil vx(&form);
        vx.Loaded();
        vx.SetNumLang(3);
        const double ms = timeMs([&] { vx.BuildList(); });
        if (r >= 0)
            t.push_back(ms);
    }
    return median(t);
}

void benchFiles(Figures &out, const QDir &dir, int n, int reps, double *loadMs)
{
    const QString file = dir.filePath(QStringLiteral("bench_%1.lng").arg(n));
    QWidget form;
    TVexil vx(&form);
    vx.Loaded();
    vx.SetNumLang(3);
    QStringList lines;
    for (int i = 0; i < n; ++i)
        lines << QStringLiteral("IDS_%1\t%2\t%3\t%4\t").arg(i).arg(englishText(i), translatedText(2, i), translatedText(3, i));
    vx.Strings()->setLines(lines);

    std::vector<double> save, load;
    for (int r = -1; r < reps; ++r) { // round -1 warms the allocator up and is not counted
        QFile::remove(file);
        save.push_back(timeMs([&] { vx.SaveAllToFile(file, QLatin1Char('|')); }));
        QWidget other;
        TVexil reader(&other);
        reader.Loaded();
        reader.SetNumLang(3);
        load.push_back(timeMs([&] { reader.LoadAllFromFile(file, true); }));
        if (reader.Strings()->count() != n)
            qFatal("loaded %d of %d entries", int(reader.Strings()->count()), n);
        if (r < 0) {
            save.clear();
            load.clear();
        }
    }
    out.add(QStringLiteral("save_%1_ms").arg(n), median(save));
    out.add(QStringLiteral("load_%1_ms").arg(n), median(load));
    *loadMs = median(load);
}


QString stringLine(const QString &id, int i)
{
    return id + QLatin1Char('\t') + englishText(i) + QLatin1Char('\t') + translatedText(2, i) + QLatin1Char('\t')
        + translatedText(3, i) + QLatin1Char('\t');
}

std::vector<int> shuffled(int n, unsigned seed)
{
    std::vector<int> order(n);
    for (int i = 0; i < n; ++i)
        order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(seed));
    return order;
}

// Median time of @p reps rounds (after one uncounted warm-up round) of
// @p run on a fresh fixture made by @p make, which is not timed.
template<typename Make, typename Run>
double roundsMs(int reps, Make make, Run run)
{
    std::vector<double> t;
    for (int r = -1; r < reps; ++r) {
        auto fixture = make();
        const double ms = timeMs([&] { run(*fixture); });
        if (r >= 0)
            t.push_back(ms);
    }
    return median(t);
}

// AddString of every existing identifier (so each line moves to the end)
// and DeleteString of every identifier, in random order, on a table of n.
// A round at 5,000 takes about a millisecond, so a stray time slice of
// another process moves a single round by a large part: the sizes take
// turns round by round (so both meet the same machine), and the median is
// taken over five times the usual repetitions.
void benchMaintenance(Figures &out, const QList<int> &sizes, int reps)
{
    struct Table
    {
        int n;
        std::vector<int> order;
        QStringList ids, lines;
        std::vector<double> add, del;
    };
    std::vector<Table> tables;
    for (int n : sizes) {
        Table t{n, shuffled(n, 7), {}, {}, {}, {}};
        for (int i = 0; i < n; ++i) {
            t.ids << QStringLiteral("IDS_%1").arg(i);
            t.lines << stringLine(t.ids.last(), i);
        }
        tables.push_back(std::move(t));
    }
    auto make = [](const Table &t) {
        auto vx = std::make_unique<TVexil>();
        vx->SetNumLang(3);
        vx->Strings()->setLines(t.lines);
        vx->GetText(t.ids.first()); // a table in use has its index
        return vx;
    };
    const int rounds = reps * 5;
    for (int r = -1; r < rounds; ++r) { // round -1 warms the allocator up and is not counted
        for (Table &t : tables) {
            std::unique_ptr<TVexil> vx = make(t);
            const double addMs = timeMs([&] {
                for (int i : t.order)
                    vx->AddString(t.ids.at(i), {englishText(i), translatedText(2, i), translatedText(3, i)});
            });
            if (vx->Strings()->count() != t.n || vx->GetText(t.ids.at(t.order.front())) != englishText(t.order.front()))
                qFatal("AddString lost a line");
            vx = make(t);
            const double delMs = timeMs([&] {
                for (int i : t.order) {
                    if (!vx->DeleteString(t.ids.at(i)))
                        qFatal("DeleteString missed %s", qPrintable(t.ids.at(i)));
                }
            });
            if (vx->Strings()->count() != 0)
                qFatal("DeleteString left lines");
            if (r >= 0) {
                t.add.push_back(addMs);
                t.del.push_back(delMs);
            }
        }
    }
    for (const Table &t : tables) {
        out.add(QStringLiteral("addstring_%1_ms").arg(t.n), median(t.add));
        out.add(QStringLiteral("deletestring_%1_ms").arg(t.n), median(t.del));
    }
    out.add(QStringLiteral("addstring_scaling"), median(tables.back().add) / median(tables.front().add));
    out.add(QStringLiteral("deletestring_scaling"), median(tables.back().del) / median(tables.front().del));
}

// DeleteKey of every key, in random order, of a section of n keys.
void benchDeleteKey(Figures &out, const QDir &dir, const QList<int> &sizes, int reps)
{
    QList<double> t;
    const QString section = QStringLiteral("Strings");
    for (int n : sizes) {
        const std::vector<int> order = shuffled(n, 11);
        QStringList text{QLatin1Char('[') + section + QLatin1Char(']')}, keys;
        for (int i = 0; i < n; ++i) {
            keys << QStringLiteral("IDS_%1").arg(i);
            text << keys.last() + QLatin1Char('=') + englishText(i);
        }
        const QString file = dir.filePath(QStringLiteral("deletekey_%1.ini").arg(n));
        t << roundsMs(
            reps,
            [&] {
                auto ini = std::make_unique<TMemIniFile>(file);
                ini->SetStrings(text);
                ini->ReadString(section, keys.first(), QString()); // a store in use has its indexes
                return ini;
            },
            [&](TMemIniFile &ini) {
                for (int i : order)
                    ini.DeleteKey(section, keys.at(i));
                QStringList left;
                ini.ReadSection(section, left);
                if (!left.isEmpty())
                    qFatal("DeleteKey left %d keys", int(left.size()));
            });
        out.add(QStringLiteral("deletekey_%1_ms").arg(n), t.last());
    }
    out.add(QStringLiteral("deletekey_scaling"), t.last() / t.first());
}

// Heap held by a component with n lines of three languages in its
// application strings, after every identifier has been looked up once (so
// the index and any look-up caches are counted), against the UTF-16 bytes
// of the lines it holds.
void benchTableBytes(Figures &out, int n)
{
    // Realistic lines: component-like keys and texts of 10 to 30 characters.
    std::mt19937 rng(3);
    static const char *const words[] = {"Open", "file", "Save", "the", "current", "document", "Print", "preview",
                                        "Cancel", "all", "changes", "Close", "window", "Help", "about", "Edit"};
    auto text = [&] {
        const int target = 10 + int(rng() % 21);
        QString t;
        while (t.size() < target) {
            if (!t.isEmpty())
                t += QLatin1Char(' ');
            t += QLatin1String(words[rng() % 16]);
        }
        return t.left(target);
    };
    static const char *const kinds[] = {"Button", "Label", "Action", "CheckBox", "Menu"};
    QStringList ids;
    for (int i = 0; i < n; ++i)
        ids << QLatin1String(kinds[i % 5]) + QString::number(i);

    qint64 chars = 0;
    // In use: small blocks from the arenas plus blocks mapped on their own.
    auto heapInUse = [] {
        const struct mallinfo2 m = mallinfo2();
        return m.uordblks + m.hblkhd;
    };
    malloc_trim(0);
    const size_t before = heapInUse();
    auto *vx = new TVexil;
    vx->SetNumLang(3);
    {
        QStringList lines;
        lines.reserve(n);
        for (int i = 0; i < n; ++i) {
            lines << ids.at(i) + QLatin1Char('\t') + text() + QLatin1Char('\t') + text() + QLatin1Char('\t')
                    + text() + QLatin1Char('\t');
            chars += lines.last().size();
        }
        vx->Strings()->setLines(lines);
    }
    qsizetype sink = 0;
    for (int lang = 1; lang <= 3; ++lang) {
        vx->SetActLang(lang);
        for (const QString &id : std::as_const(ids))
            sink += vx->GetText(id).size();
    }
    if (sink == 0)
        qFatal("no texts found");
    const size_t after = heapInUse();
    delete vx;
    out.add(QStringLiteral("table_bytes_%1").arg(n), double(after - before));
    out.add(QStringLiteral("table_text_bytes_%1").arg(n), double(chars * 2));
    out.add(QStringLiteral("table_bytes_per_char"), double(after - before) / double(chars * 2));
}

// The interchange with translators' tools: exporting a translation file to
// .ts and importing a .ts back (read, match, write the file), at two sizes,
// and the import against Qt's own converter reading the same .ts.
QString lconvertPath()
{
#ifdef VEXIL_LCONVERT
    return QStringLiteral(VEXIL_LCONVERT);
#else
    return QStringLiteral("lconvert");
#endif
}

QString writeInterchangeFile(const QDir &dir, int n, bool translated)
{
    const QString path = dir.filePath(QStringLiteral("interchange_%1_%2.lng").arg(n).arg(translated ? 1 : 0));
    QFile::remove(path);
    TMemIniFile ini(path);
    Vexil::FileFormat::writeHeader(ini, QLatin1Char('|'), {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("FRENCH")});
    static const char *const sections[] = {"Captions", "Hints", "Strings", "Multilines"};
    for (int i = 0; i < n; ++i) {
        const QStringList texts{englishText(i), translated ? translatedText(2, i) : QString(),
                                translated ? translatedText(3, i) : QString()};
        ini.WriteString(QLatin1String(sections[i % 4]), QStringLiteral("Form%1.Item%2").arg(i % 20).arg(i),
                        Vexil::Interchange::TvxTranslationTable::joinValue(texts, QLatin1Char('|')));
    }
    ini.UpdateFile();
    return path;
}

void benchInterchange(Figures &out, const QDir &dir, const QList<int> &sizes, int reps)
{
    using namespace Vexil::Interchange;
    QList<double> exports, imports;
    double lastImport = 0;
    QString lastTs;
    for (int n : sizes) {
        const QString full = writeInterchangeFile(dir, n, true);
        const QString blank = writeInterchangeFile(dir, n, false);
        const QString ts = dir.filePath(QStringLiteral("interchange_%1_de.ts").arg(n));
        std::vector<double> ex, im;
        for (int r = 0; r < reps; ++r) {
            ex.push_back(timeMs([&] {
                TvxTranslationTable table;
                QString error;
                if (!table.load(full, &error) || !Ts::write(exportMessages(table, 2, {}, {}), ts, &error))
                    qFatal("export failed: %s", qPrintable(error));
            }));
        }
        const QString work = dir.filePath(QStringLiteral("interchange_work.lng"));
        for (int r = 0; r < reps; ++r) {
            QFile::remove(work);
            QFile::copy(blank, work);
            int updated = 0;
            im.push_back(timeMs([&] {
                TvxTranslationTable table;
                TvxMessageFile messages;
                QString error;
                if (!table.load(work, &error) || !Ts::read(ts, &messages, &error))
                    qFatal("import failed: %s", qPrintable(error));
                updated = importMessages(table, messages, 2).updated;
                if (!table.save(&error))
                    qFatal("import failed: %s", qPrintable(error));
            }));
            if (updated != n)
                qFatal("import updated %d of %d entries", updated, n);
        }
        exports << median(ex);
        imports << median(im);
        out.add(QStringLiteral("export_%1_ms").arg(n), exports.last());
        out.add(QStringLiteral("import_%1_ms").arg(n), imports.last());
        lastImport = imports.last();
        lastTs = ts;
    }
    out.add(QStringLiteral("export_scaling"), exports.last() / exports.first());
    out.add(QStringLiteral("import_scaling"), imports.last() / imports.first());

    std::vector<double> lc;
    const QString po = dir.filePath(QStringLiteral("interchange_lconvert.po"));
    for (int r = 0; r < reps; ++r) {
        lc.push_back(timeMs([&] {
            QProcess p;
            p.start(lconvertPath(), {QStringLiteral("-i"), lastTs, QStringLiteral("-o"), po});
            if (!p.waitForFinished(600000) || p.exitCode() != 0)
                qFatal("lconvert failed: %s", p.readAllStandardError().constData());
        }));
    }
    out.add(QStringLiteral("lconvert_%1_ms").arg(sizes.last()), median(lc));
    out.add(QStringLiteral("import_vs_lconvert"), lastImport / median(lc));
}

} // namespace


// The grid editor on a table of n lines and three languages: opening the
// editor (form, model, view) and applying it; and, at the largest size, the
// model alone against filling Qt's item model with the same cells.
void benchEditor(Figures &out, const QList<int> &sizes, int reps)
{
    std::vector<double> open, apply;
    QStringList largest;
    for (int n : sizes) {
        QStringList lines;
        lines.reserve(n);
        for (int i = 0; i < n; ++i)
            lines << stringLine(QStringLiteral("IDS_%1").arg(i), i);
        TVexil vx;
        vx.SetNumLang(3);
        vx.Strings()->setLines(lines);
        std::vector<double> o, a;
        for (int r = -1; r < reps; ++r) {
            auto form = std::make_unique<TDlgForm>(&vx, QStringLiteral("Strings"), stStrings, vx.Strings());
            const double openMs = timeMs([&] {
                form->show();
                QCoreApplication::processEvents();
            });
            if (form->model()->rowCount() != n)
                qFatal("the editor lost rows");
            form->model()->setCell(n / 2, 2, QStringLiteral("edited"));
            const double applyMs = timeMs([&] { form->BitBtn1Click(); });
            if (form->result().size() != n)
                qFatal("Apply lost rows");
            if (r >= 0) {
                o.push_back(openMs);
                a.push_back(applyMs);
            }
        }
        open.push_back(median(o));
        apply.push_back(median(a));
        out.add(QStringLiteral("editor_open_%1_ms").arg(n), open.back());
        out.add(QStringLiteral("editor_apply_%1_ms").arg(n), apply.back());
        largest = lines;
    }
    out.add(QStringLiteral("editor_open_scaling"), open.back() / open.front());
    out.add(QStringLiteral("editor_apply_scaling"), apply.back() / apply.front());

    // The naive grid gets its cells already cut; ours cuts them as it fills.
    QList<QStringList> cells;
    cells.reserve(largest.size());
    for (const QString &line : std::as_const(largest))
        cells << line.split(QLatin1Char('\t')).mid(0, 4);
    std::vector<double> ours, naive;
    for (int r = -1; r < reps; ++r) {
        TvxGridModel model;
        const double m = timeMs([&] { model.build(largest, QLatin1Char('\t'), 3); });
        QStandardItemModel items;
        const double q = timeMs([&] {
            items.setRowCount(int(cells.size()));
            items.setColumnCount(4);
            for (int row = 0; row < cells.size(); ++row) {
                const QStringList &c = cells.at(row);
                for (int col = 0; col < c.size(); ++col)
                    items.setItem(row, col, new QStandardItem(c.at(col)));
            }
        });
        if (model.rowCount() != items.rowCount())
            qFatal("the models differ");
        if (r >= 0) {
            ours.push_back(m);
            naive.push_back(q);
        }
    }
    out.add(QStringLiteral("editor_model_%1_ms").arg(largest.size()), median(ours));
    out.add(QStringLiteral("itemmodel_%1_ms").arg(largest.size()), median(naive));
    out.add(QStringLiteral("editor_open_vs_itemmodel"), median(ours) / median(naive));
}


#ifdef VEXIL_DICTIONARY_EXE
// The dictionary manager program on a session bus: the round trip of one
// look-up, and Auto-translate of n rows whose first language the memory
// knows in the other two.
void benchDictionary(Figures &out, const QDir &dir, const QList<int> &sizes, int reps)
{
    const QString name = QStringLiteral("org.vexil.bench.dict%1").arg(QCoreApplication::applicationPid());
    QProcess manager;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    manager.setProcessEnvironment(env);
    manager.start(QStringLiteral(VEXIL_DICTIONARY_EXE),
                  {QStringLiteral("--database"), dir.filePath(QStringLiteral("bench-dictionary.sqlite")),
                   QStringLiteral("--service-name"), name});
    QElapsedTimer wait;
    wait.start();
    while (!QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value()) {
        if (wait.elapsed() > 15000)
            qFatal("the dictionary manager did not start");
        QThread::msleep(20);
    }
    TvxDictionaryClient client(name);
    const int most = sizes.last();
    const QString en = QStringLiteral("English"), de = QStringLiteral("German"), fr = QStringLiteral("French");
    for (int i = 0; i < most; ++i) {
        client.AddTranslation(en, de, englishText(i), translatedText(2, i));
        client.AddTranslation(en, fr, englishText(i), translatedText(3, i));
    }
    client.Save();

    std::vector<double> lookups;
    for (int i = 0; i < 2000; ++i) {
        const int n = (i * 7919) % most;
        QString answer;
        const double ms = timeMs([&] { answer = client.GetTranslation(en, fr, englishText(n)); });
        if (answer != translatedText(3, n))
            qFatal("the dictionary gave a wrong answer");
        lookups.push_back(ms * 1000);
    }
    out.add(QStringLiteral("dict_lookup_us"), median(lookups));
    // The floor: a bus round trip to the same program that does nothing.
    std::vector<double> pings;
    const QDBusMessage ping = QDBusMessage::createMethodCall(name, QStringLiteral("/"),
                                                             QStringLiteral("org.freedesktop.DBus.Peer"),
                                                             QStringLiteral("Ping"));
    for (int i = 0; i < 2000; ++i)
        pings.push_back(1000 * timeMs([&] { QDBusConnection::sessionBus().call(ping); }));
    out.add(QStringLiteral("dict_ping_us"), median(pings));

    std::vector<double> times;
    for (int n : sizes) {
        QStringList lines;
        for (int i = 0; i < n; ++i)
            lines << QStringLiteral("IDS_%1\t%2\t\t\t").arg(i).arg(englishText(i));
        std::vector<double> t;
        for (int r = 0; r < reps; ++r) {
            TvxGridModel model;
            model.build(lines, QLatin1Char('\t'), 3);
            model.setHeader(1, en);
            model.setHeader(2, de);
            model.setHeader(3, fr);
            int written = 0;
            t.push_back(timeMs([&] { written = TvxDictionaryCommands::autoTranslate(model, client); }));
            if (written != 2 * n)
                qFatal("Auto-translate missed cells");
        }
        times.push_back(median(t));
        out.add(QStringLiteral("dict_autotranslate_%1_ms").arg(n), times.back());
    }
    out.add(QStringLiteral("dict_autotranslate_scaling"), times.back() / times.front());
    manager.terminate();
    manager.waitForFinished(5000);
}
#endif

// Without a session bus, one of our own for the run. It must exist before
// anything asks for the bus: Qt connects to it once per process.
void ensureSessionBus(QProcess &bus)
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return;
    bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                              QStringLiteral("--print-address=1")});
    if (!bus.waitForReadyRead(10000))
        qFatal("cannot start a session bus");
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
}


// A tree of n items (a hundred top-level nodes with children) translated by
// the list- and tree-item component: build its lines, then switch between
// two languages.
void benchItems(Figures &out, const QList<int> &sizes, int reps)
{
    std::vector<double> switches;
    for (int n : sizes) {
        QWidget form;
        form.setObjectName(QStringLiteral("ItemsForm"));
        auto *tree = new QTreeWidget(&form);
        tree->setObjectName(QStringLiteral("tvItems"));
        QTreeWidgetItem *parent = nullptr;
        for (int i = 0; i < n; ++i) {
            if (i % (n / 100) == 0)
                parent = new QTreeWidgetItem(tree, {englishText(i)});
            else
                new QTreeWidgetItem(parent, {englishText(i)});
        }
        auto *vx = new TVexilTLV(&form);
        vx->SetNumLang(2);
        const double build = timeMs([&] { vx->BuildList(); });
        QStringList lines = vx->ListView_TreeView_Items()->lines();
        for (int i = 0; i < lines.size(); ++i)
            lines[i].replace(QStringLiteral("\t\t\t"), QStringLiteral("\t") + translatedText(2, i) + QStringLiteral("\t"));
        vx->ListView_TreeView_Items()->setLines(lines);
        std::vector<double> t;
        for (int r = -1; r < reps; ++r) {
            const double ms = timeMs([&] {
                vx->SetActLang(2);
                vx->SetActLang(1);
            });
            if (r >= 0)
                t.push_back(ms / 2);
        }
        vx->SetActLang(2);
        if (tree->topLevelItem(0)->text(0) != translatedText(2, 0))
            qFatal("the tree did not switch");
        switches.push_back(median(t));
        out.add(QStringLiteral("tlv_build_%1_ms").arg(n), build);
        out.add(QStringLiteral("tlv_switch_%1_ms").arg(n), switches.back());
    }
    out.add(QStringLiteral("tlv_switch_scaling"), switches.back() / switches.front());
}

// A generated tree of C++ units: @p files units of @p functions functions,
// each with a few tr() calls and plain literals, under @p root.
QStringList writeSourceTree(const QDir &root, int files, int functions)
{
    QStringList paths;
    for (int f = 0; f < files; ++f) {
        const QString sub = QStringLiteral("module%1").arg(f % 10);
        root.mkpath(sub);
        const QString path = root.filePath(QStringLiteral("%1/unit%2.cpp").arg(sub).arg(f));
        QByteArray text = "#include <QtWidgets/QWidget>\n#include <QtWidgets/QLabel>\n\n";
        text += "class Unit" + QByteArray::number(f) + " : public QWidget\n{\n    Q_OBJECT\npublic:\n";
        for (int k = 0; k < functions; ++k)
            text += "    void f" + QByteArray::number(k) + "(QLabel *label);\n";
        text += "};\n\n";
        for (int k = 0; k < functions; ++k) {
            const QByteArray n = QByteArray::number(f * functions + k);
            text += "void Unit" + QByteArray::number(f) + "::f" + QByteArray::number(k) + "(QLabel *label)\n{\n";
            text += "    label->setText(tr(\"Caption number " + n + "\"));\n";
            text += "    label->setToolTip(tr(\"Hint for item " + n + " of the form\"));\n";
            text += "    if (label->text().isEmpty())\n        label->setWhatsThis(tr(\"Line\\tone \" \"and two " + n + "\"));\n";
            text += "    const int width = label->width() * 2 + " + n + ";\n    label->resize(width, 20);\n}\n\n";
        }
        QFile out(path);
        out.open(QIODevice::WriteOnly);
        out.write(text);
        paths << path;
    }
    return paths;
}

// The statement-mode scan of a tree of units (each read through the
// expert's safe unit reader) against lupdate extracting the same tree.
void benchScan(Figures &out, const QDir &dir, int reps)
{
    using namespace Vexil::Expert;
    QDir small(dir.filePath(QStringLiteral("scan-small"))), large(dir.filePath(QStringLiteral("scan-large")));
    QDir().mkpath(small.path());
    QDir().mkpath(large.path());
    const QStringList smallFiles = writeSourceTree(small, 300, 40);
    const QStringList largeFiles = writeSourceTree(large, 600, 40);
    qint64 bytes = 0;
    for (const QString &f : smallFiles)
        bytes += QFileInfo(f).size();
    auto scanAll = [](const QStringList &files) {
        qsizetype rows = 0;
        const QString prefix = callPrefix(QStringLiteral("Form1"), QStringLiteral("Vexil1"), true);
        for (const QString &f : files) {
            TvxUnitFile unit(f);
            if (!unit.read())
                qFatal("cannot read a generated unit");
            rows += scanStatements(unit.text(), prefix, 0).rows.size();
        }
        return rows;
    };
    std::vector<double> ts, tl;
    qsizetype found = 0;
    for (int r = 0; r < reps; ++r) {
        ts.push_back(timeMs([&] { found = scanAll(smallFiles); }));
        tl.push_back(timeMs([&] { scanAll(largeFiles); }));
    }
    if (found != qsizetype(300) * 40 * 4)
        qFatal("the scan missed literals");
    const double scan = median(ts);
    out.add(QStringLiteral("scan_tree_bytes"), double(bytes));
    out.add(QStringLiteral("scan_tree_ms"), scan);
    out.add(QStringLiteral("scan_scaling"), median(tl) / scan);
#ifdef VEXIL_LUPDATE
    std::vector<double> tu;
    const QString ts_file = dir.filePath(QStringLiteral("scan.ts"));
    for (int r = 0; r < std::max(3, reps / 3); ++r) {
        QFile::remove(ts_file);
        QProcess lupdate;
        tu.push_back(timeMs([&] {
            lupdate.start(QStringLiteral(VEXIL_LUPDATE),
                          {QStringLiteral("-silent"), QStringLiteral("-no-obsolete"), small.path(),
                           QStringLiteral("-ts"), ts_file});
            lupdate.waitForFinished(600000);
        }));
        if (lupdate.exitCode() != 0 || !QFile::exists(ts_file))
            qFatal("lupdate failed: %s", lupdate.readAllStandardError().constData());
    }
    out.add(QStringLiteral("scan_lupdate_ms"), median(tu));
    out.add(QStringLiteral("scan_vs_lupdate"), scan / median(tu));
#endif
}

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption quick(QStringLiteral("quick"), QStringLiteral("Fewer repetitions."));
    QCommandLineOption only(QStringLiteral("only"),
                            QStringLiteral("Run one group: switch, gettext, buildlist, files, maintenance, deletekey, memory, editor, dictionary, items, scan or interchange."),
                            QStringLiteral("group"));
    parser.addOption(quick);
    parser.addOption(only);
    parser.process(app);
    const int reps = parser.isSet(quick) ? 3 : 9;

    QTemporaryDir tmp;
    const QDir dir(tmp.path());
    Figures out;
    QProcess bus;
    ensureSessionBus(bus);

    const QString group = parser.value(only);
    auto wanted = [&group](const char *name) { return group.isEmpty() || group == QLatin1String(name); };

    if (wanted("switch"))
        benchSwitch(out, dir, 1000, reps);
    if (wanted("gettext"))
        benchGetText(out, dir, {1000, 10000, 100000}, reps);
    if (wanted("buildlist")) {
        const double b1 = buildListMs(1000, reps);
        const double b2 = buildListMs(2000, reps);
        out.add(QStringLiteral("buildlist_1000_ms"), b1);
        out.add(QStringLiteral("buildlist_2000_ms"), b2);
        out.add(QStringLiteral("buildlist_scaling"), b2 / b1);
    }
    if (wanted("files")) {
        double l1 = 0, l2 = 0;
        benchFiles(out, dir, 50000, reps, &l1);
        benchFiles(out, dir, 100000, reps, &l2);
        out.add(QStringLiteral("load_scaling"), l2 / l1);
    }

    if (wanted("maintenance"))
        benchMaintenance(out, {5000, 10000}, reps);
    if (wanted("deletekey"))
        benchDeleteKey(out, dir, {5000, 10000}, reps);
    if (wanted("memory"))
        benchTableBytes(out, 100000);
    if (wanted("editor")) {
        // The editor keeps its column widths in the user's settings: here in
        // the benchmark's own folder.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, tmp.path());
        benchEditor(out, {50000, 100000}, reps);
    }
    if (wanted("items"))
        benchItems(out, {5000, 10000}, reps);
    if (wanted("scan"))
        benchScan(out, dir, reps);
#ifdef VEXIL_DICTIONARY_EXE
    if (wanted("dictionary"))
        benchDictionary(out, dir, {5000, 10000}, parser.isSet(quick) ? 1 : 3);
#endif
    if (wanted("interchange"))
        benchInterchange(out, dir, {50000, 100000}, reps);

    for (const auto &line : std::as_const(out.lines))
        std::printf("%s: %s\n", qPrintable(line.first), qPrintable(line.second));
    std::fflush(stdout);
    if (bus.state() == QProcess::Running) {
        bus.terminate();
        bus.waitForFinished(5000);
    }
    return 0;
}
