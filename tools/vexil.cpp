// vexil: translation files on the command line. Exchanges them with
// translators' tools (.ts, .po), reports and checks them for builds, merges
// them and runs the expert's source scans without a window.
//
// Exit status: 0 done; 1 the checks found errors (validate, or an import
// with --strict that left messages out); 2 bad arguments; 3 an input file
// is missing, unreadable or damaged; 4 an output file cannot be written.

#include "vximport.h"
#include "vxmerge.h"
#include "vxpoformat.h"
#include "vxsourcescan.h"
#include "vxstats.h"
#include "vxtsformat.h"
#include "vxvalidate.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>

#include <cstdio>
#include <unistd.h>

using namespace Vexil::Interchange;

namespace {

enum ExitCode { ExitOk = 0, ExitChecks = 1, ExitUsage = 2, ExitInput = 3, ExitOutput = 4 };

QTextStream &out()
{
    static QTextStream s(stdout);
    return s;
}

QTextStream &err()
{
    static QTextStream s(stderr);
    return s;
}

int usageError(const QString &message, const QString &command)
{
    err() << "vexil " << command << ": " << message << "\n"
          << "Try 'vexil " << command << " --help'.\n";
    err().flush();
    return ExitUsage;
}

int inputError(const QString &message)
{
    err() << "vexil: " << message << "\n";
    err().flush();
    return ExitInput;
}

int outputError(const QString &message)
{
    err() << "vexil: " << message << "\n";
    err().flush();
    return ExitOutput;
}

// Progress on standard error, only when it is a terminal and the job is
// large enough to wait for.
Progress progressFor(const QString &what, qint64 total)
{
    if (total < 20000 || !isatty(fileno(stderr)))
        return {};
    return [what](qint64 done, qint64 all) {
        const int percent = all ? int(done * 100 / all) : 100;
        err() << "\r" << what << ": " << percent << "%" << (done >= all ? "\n" : "");
        err().flush();
    };
}

// A parser for one command: its positional arguments, options and help.
struct Command
{
    QString name;
    QCommandLineParser parser;
    explicit Command(const QString &commandName, const QString &description) : name(commandName)
    {
        parser.setApplicationDescription(description);
        parser.addHelpOption();
    }
    // Parses; prints help (exit 0) on --help. Returns -1 when fine, else an exit code.
    int parse(const QStringList &args, int minPositional, int maxPositional = -1)
    {
        if (!parser.parse(args))
            return usageError(parser.errorText(), name);
        if (parser.isSet(QStringLiteral("help"))) {
            // Qt names the program by the path it was started with.
            QString help = parser.helpText();
            const QString program = QCoreApplication::arguments().constFirst();
            const qsizetype at = help.indexOf(program);
            if (at >= 0)
                help.replace(at, program.size(), QStringLiteral("vexil ") + name);
            if (!help.endsWith(QLatin1Char('\n')))
                help += QLatin1Char('\n');
            out() << help;
            out().flush();
            return ExitOk;
        }
        const int n = int(parser.positionalArguments().size());
        if (n < minPositional)
            return usageError(QStringLiteral("missing arguments"), name);
        if (maxPositional >= 0 && n > maxPositional)
            return usageError(QStringLiteral("too many arguments"), name);
        return -1;
    }
};

bool loadTable(TvxTranslationTable &table, const QString &fileName, int *code)
{
    QString error;
    if (table.load(fileName, &error))
        return true;
    *code = inputError(error);
    return false;
}

// The categories named by --category (section words or table names).
bool categoriesOf(const QStringList &names, QList<TStringsType> *categories, QString *bad)
{
    for (const QString &list : names) {
        for (const QString &name : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            const int c = TvxTranslationTable::categoryOf(name.trimmed());
            if (c < 0) {
                *bad = name;
                return false;
            }
            categories->append(TStringsType(c));
        }
    }
    return true;
}

QStringList splitList(const QStringList &values)
{
    QStringList all;
    for (const QString &v : values)
        all += v.split(QLatin1Char(','), Qt::SkipEmptyParts);
    return all;
}

QString formatOf(const QString &fileName, const QString &given)
{
    if (!given.isEmpty())
        return given.toLower();
    return QFileInfo(fileName).suffix().toLower();
}

QString categoryList()
{
    QStringList names;
    for (int c = 0; c < StringsTypeCount; ++c)
        names << TvxTranslationTable::sectionName(TStringsType(c));
    return names.join(QStringLiteral(", "));
}

int runExport(const QStringList &args)
{
    Command cmd(QStringLiteral("export"),
                QStringLiteral("Writes the translations of a translation file for translators' tools: one Qt .ts "
                               "or gettext .po file per target language (languages 2 and up), language 1 as the "
                               "source text. Entries with an empty language-1 text are left out."));
    cmd.parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The translation file."));
    QCommandLineOption format(QStringLiteral("format"), QStringLiteral("ts (default) or po."), QStringLiteral("format"),
                              QStringLiteral("ts"));
    QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                              QStringLiteral("Folder for the files (default: the current folder)."),
                              QStringLiteral("folder"), QStringLiteral("."));
    QCommandLineOption form(QStringLiteral("form"), QStringLiteral("Only this form (repeat or separate by commas)."),
                            QStringLiteral("name"));
    QCommandLineOption category(QStringLiteral("category"),
                                QStringLiteral("Only this category (repeat or separate by commas): ") + categoryList()
                                    + QLatin1Char('.'),
                                QStringLiteral("name"));
    QCommandLineOption language(QStringLiteral("language"),
                                QStringLiteral("Only this target language, by number or name (repeatable)."),
                                QStringLiteral("language"));
    cmd.parser.addOptions({format, output, form, category, language});
    if (int code = cmd.parse(args, 1, 1); code >= 0)
        return code;

    const QString kind = cmd.parser.value(format).toLower();
    if (kind != QLatin1String("ts") && kind != QLatin1String("po"))
        return usageError(QStringLiteral("unknown format \"%1\" (ts or po)").arg(kind), cmd.name);
    QList<TStringsType> categories;
    QString bad;
    if (!categoriesOf(cmd.parser.values(category), &categories, &bad))
        return usageError(QStringLiteral("unknown category \"%1\" (one of %2)").arg(bad, categoryList()), cmd.name);

    TvxTranslationTable table;
    int code = 0;
    const QString fileName = cmd.parser.positionalArguments().at(0);
    if (!loadTable(table, fileName, &code))
        return code;
    if (table.languageCount() < 2)
        return inputError(QStringLiteral("%1 has one language only: there is nothing to translate into").arg(fileName));

    QList<int> languages;
    for (const QString &l : splitList(cmd.parser.values(language))) {
        QString error;
        const int n = targetLanguage(table, l, QString(), QString(), false, &error);
        if (n < 0)
            return usageError(error, cmd.name);
        languages << n;
    }
    if (languages.isEmpty()) {
        for (int n = 2; n <= table.languageCount(); ++n)
            languages << n;
    }
    const QDir dir(cmd.parser.value(output));
    if (!dir.exists() && !QDir().mkpath(dir.path()))
        return outputError(QStringLiteral("%1: cannot create the folder").arg(dir.path()));

    // File names carry the language code when it tells the languages apart.
    QHash<QString, int> codeUse;
    for (int n = 2; n <= table.languageCount(); ++n)
        ++codeUse[languageCode(table.languageName(n))];
    const QString stem = QFileInfo(fileName).completeBaseName();
    const QStringList forms = splitList(cmd.parser.values(form));
    for (int n : std::as_const(languages)) {
        int skipped = 0;
        const TvxMessageFile messages = exportMessages(table, n, forms, categories, &skipped);
        const QString code = languageCode(table.languageName(n));
        const QString suffix = !code.isEmpty() && codeUse.value(code) == 1 ? code : QString::number(n);
        const QString target = dir.filePath(stem + QLatin1Char('_') + suffix + QLatin1Char('.') + kind);
        QString error;
        const bool ok = kind == QLatin1String("ts") ? Ts::write(messages, target, &error)
                                                     : Po::write(messages, target, &error);
        if (!ok)
            return outputError(error);
        out() << target << ": " << messages.messages.size() << " messages, language " << n << " ("
              << table.languageName(n) << ")";
        if (skipped)
            out() << ", left out for an empty language-1 text: " << skipped;
        out() << "\n";
    }
    out().flush();
    return ExitOk;
}

void printImportReport(const QString &file, const TvxImportReport &r, int language, const QString &languageName)
{
    out() << file << ": language " << language << " (" << languageName << "): " << r.updated << " updated, "
          << r.unchanged << " unchanged";
    if (r.unfinished)
        out() << ", " << r.unfinished << " unfinished or untranslated left out";
    if (r.obsolete)
        out() << ", " << r.obsolete << " obsolete left out";
    if (!r.unmatched.isEmpty())
        out() << ", " << r.unmatched.size() << " without a matching entry";
    if (!r.sourceChanged.isEmpty())
        out() << ", " << r.sourceChanged.size() << " whose source text changed";
    if (!r.unstorable.isEmpty())
        out() << ", " << r.unstorable.size() << " with characters a translation file cannot hold";
    out() << "\n";
    out().flush();
    for (const QString &m : r.unmatched)
        err() << file << ": " << m << ": no matching entry, left out\n";
    for (const QString &m : r.sourceChanged)
        err() << file << ": " << m << ": language 1's text is no longer the message's source, left out\n";
    for (const QString &m : r.unstorable)
        err() << file << ": " << m
              << ": the translation holds NUL or a control character 25, 26 or 28, which a translation file "
                 "cannot hold; left out\n";
    err().flush();
}

int runImport(const QStringList &args, bool qtFiles)
{
    const QString name = qtFiles ? QStringLiteral("import-qt") : QStringLiteral("import");
    Command cmd(name,
                qtFiles ? QStringLiteral("Takes the translations of an existing Qt application's .ts files into a "
                                         "translation file: each message's context is a form class, its source "
                                         "language 1's text; every entry of that form showing that text gets the "
                                         "translation. A language the translation file lacks is added.")
                        : QStringLiteral("Takes translators' .ts or .po files (as exported, or converted between the "
                                         "two formats) back into a translation file. Only the texts of the target "
                                         "language change; messages that find no entry are reported, never added. "
                                         "Unfinished and fuzzy messages are left out."));
    cmd.parser.addPositionalArgument(QStringLiteral("files"), qtFiles ? QStringLiteral("The Qt .ts files.")
                                                                      : QStringLiteral("The .ts or .po files."),
                                     QStringLiteral("files..."));
    cmd.parser.addPositionalArgument(QStringLiteral("translation-file"),
                                     QStringLiteral("The translation file to update."));
    QCommandLineOption language(QStringLiteral("language"),
                                QStringLiteral("The target language, by number or name (default: the files' own "
                                               "language, or a \"_N\" ending of their names)."),
                                QStringLiteral("language"));
    QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                              QStringLiteral("Write the result to this file instead."), QStringLiteral("file"));
    QCommandLineOption strict(QStringLiteral("strict"),
                              QStringLiteral("Exit with status 1 when a message was left out for having no entry "
                                             "or a changed source."));
    QCommandLineOption format(QStringLiteral("format"), QStringLiteral("ts or po (default: by file extension)."),
                              QStringLiteral("format"));
    cmd.parser.addOptions({language, output, strict});
    if (!qtFiles)
        cmd.parser.addOption(format);
    if (int code = cmd.parse(args, 2); code >= 0)
        return code;

    QStringList files = cmd.parser.positionalArguments();
    const QString target = files.takeLast();
    for (const QString &f : std::as_const(files)) {
        const QString kind = qtFiles ? QStringLiteral("ts") : formatOf(f, cmd.parser.value(format));
        if (kind != QLatin1String("ts") && kind != QLatin1String("po"))
            return usageError(QStringLiteral("%1: not a .ts or .po file (use --format)").arg(f), cmd.name);
    }
    TvxTranslationTable table;
    int code = 0;
    if (!loadTable(table, target, &code))
        return code;

    bool leftOut = false;
    for (const QString &f : std::as_const(files)) {
        const QString kind = qtFiles ? QStringLiteral("ts") : formatOf(f, cmd.parser.value(format));
        TvxMessageFile messages;
        QString error;
        const bool ok = kind == QLatin1String("ts") ? Ts::read(f, &messages, &error) : Po::read(f, &messages, &error);
        if (!ok)
            return inputError(error);
        const int n = targetLanguage(table, cmd.parser.value(language), messages.language, f, qtFiles, &error);
        if (n < 0)
            return usageError(error, cmd.name);
        // A language new to the file gets its name; the import of our own
        // files changes texts only.
        if (qtFiles && n > table.languageNames().size()) {
            const QString langName = languageNameOf(messages.language);
            if (!langName.isEmpty())
                table.setLanguageName(n, langName);
        }
        const auto progress = progressFor(QStringLiteral("importing ") + f, messages.messages.size());
        const TvxImportReport report = qtFiles ? importQtMessages(table, messages, n, progress)
                                               : importMessages(table, messages, n, progress);
        printImportReport(f, report, n, table.languageName(n));
        leftOut = leftOut || !report.unmatched.isEmpty() || !report.sourceChanged.isEmpty()
            || !report.unstorable.isEmpty();
    }
    QString error;
    if (!table.save(&error, cmd.parser.value(output)))
        return outputError(error);
    return leftOut && cmd.parser.isSet(strict) ? ExitChecks : ExitOk;
}

int runStats(const QStringList &args)
{
    Command cmd(QStringLiteral("stats"),
                QStringLiteral("Per form, category and language: the entries, how many have a text (translated) "
                               "and how many lack one (missing)."));
    cmd.parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The translation file."));
    QCommandLineOption form(QStringLiteral("form"), QStringLiteral("Only this form (repeatable)."),
                            QStringLiteral("name"));
    cmd.parser.addOption(form);
    if (int code = cmd.parse(args, 1, 1); code >= 0)
        return code;
    TvxTranslationTable table;
    int code = 0;
    if (!loadTable(table, cmd.parser.positionalArguments().at(0), &code))
        return code;
    const QStringList forms = splitList(cmd.parser.values(form));
    const auto rows = statistics(table);
    int formWidth = 4, langWidth = 8;
    for (const auto &r : rows) {
        formWidth = std::max(formWidth, int(r.form.size()));
        langWidth = std::max(langWidth, int(table.languageName(r.language).size()) + 4);
    }
    out() << QStringLiteral("%1  %2  %3  %4  %5  %6\n")
                 .arg(QStringLiteral("Form"), -formWidth)
                 .arg(QStringLiteral("Category"), -23)
                 .arg(QStringLiteral("Language"), -langWidth)
                 .arg(QStringLiteral("Entries"), 8)
                 .arg(QStringLiteral("Translated"), 10)
                 .arg(QStringLiteral("Missing"), 8);
    qint64 entries = 0, missing = 0;
    for (const auto &r : rows) {
        if (!forms.isEmpty() && !forms.contains(r.form, Qt::CaseInsensitive))
            continue;
        out() << QStringLiteral("%1  %2  %3  %4  %5  %6\n")
                     .arg(r.form, -formWidth)
                     .arg(TvxTranslationTable::sectionName(r.category), -23)
                     .arg(QString::number(r.language) + QLatin1Char(' ') + table.languageName(r.language), -langWidth)
                     .arg(r.entries, 8)
                     .arg(r.translated, 10)
                     .arg(r.missing(), 8);
        entries += r.entries;
        missing += r.missing();
    }
    out() << "Total: " << entries << " texts, " << (entries - missing) << " translated, " << missing << " missing\n";
    out().flush();
    return ExitOk;
}

int runValidate(const QStringList &args)
{
    Command cmd(QStringLiteral("validate"),
                QStringLiteral("Checks translation files. Errors: entries with more or fewer texts than the file "
                               "has languages, texts holding the components' delimiter. Warnings: texts holding "
                               "the file delimiter, single-text values, placeholders (%1..%9), accelerators (&) "
                               "or closing punctuation differing from language 1. Exit status 1 on errors."));
    cmd.parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("The translation files."),
                                     QStringLiteral("files..."));
    QCommandLineOption strict(QStringLiteral("strict"), QStringLiteral("Warnings count as errors."));
    QCommandLineOption quiet({QStringLiteral("q"), QStringLiteral("quiet")},
                             QStringLiteral("Report errors only, no warnings."));
    QCommandLineOption delim(QStringLiteral("table-delimiter"),
                             QStringLiteral("The components' delimiter (default: tab)."), QStringLiteral("char"));
    cmd.parser.addOptions({strict, quiet, delim});
    if (int code = cmd.parse(args, 1); code >= 0)
        return code;
    QChar tableDelim(9);
    if (cmd.parser.isSet(delim)) {
        const QString d = cmd.parser.value(delim);
        if (d.size() != 1)
            return usageError(QStringLiteral("--table-delimiter takes one character"), cmd.name);
        tableDelim = d.at(0);
    }
    int errors = 0, warnings = 0;
    for (const QString &f : cmd.parser.positionalArguments()) {
        TvxTranslationTable table;
        int code = 0;
        if (!loadTable(table, f, &code))
            return code;
        for (const TvxIssue &i : validate(table, tableDelim)) {
            const bool error = i.severity == TvxIssue::Error || cmd.parser.isSet(strict);
            error ? ++errors : ++warnings;
            if (!error && cmd.parser.isSet(quiet))
                continue;
            out() << f << ": [" << TvxTranslationTable::sectionName(i.category) << "] " << i.key;
            if (i.language)
                out() << " (language " << i.language << ")";
            out() << ": " << (error ? "error: " : "warning: ") << i.message << "\n";
        }
    }
    out() << errors << " errors, " << warnings << " warnings\n";
    out().flush();
    return errors ? ExitChecks : ExitOk;
}

int runMerge(const QStringList &args)
{
    Command cmd(QStringLiteral("merge"),
                QStringLiteral("Merges the second translation file into the first: whole entries, the second "
                               "file's entry wins where both have one, the first keeps what the second lacks."));
    cmd.parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The translation file merged into."));
    cmd.parser.addPositionalArgument(QStringLiteral("other"), QStringLiteral("The translation file merged in."));
    QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                              QStringLiteral("Write the result to this file instead of the first."),
                              QStringLiteral("file"));
    cmd.parser.addOption(output);
    if (int code = cmd.parse(args, 2, 2); code >= 0)
        return code;
    const QStringList files = cmd.parser.positionalArguments();
    TvxTranslationTable into, from;
    int code = 0;
    if (!loadTable(into, files.at(0), &code) || !loadTable(from, files.at(1), &code))
        return code;
    const auto report = mergeTables(into, from, progressFor(QStringLiteral("merging"), from.entries().size()));
    QString error;
    if (!into.save(&error, cmd.parser.value(output)))
        return outputError(error);
    out() << into.fileName() << ": " << report.added << " added, " << report.replaced << " replaced, "
          << report.unchanged << " unchanged\n";
    out().flush();
    return ExitOk;
}

bool readSource(const QString &fileName, QString *text, int *code)
{
    QFile f(fileName);
    if (!f.exists()) {
        *code = inputError(QStringLiteral("%1: no such file").arg(fileName));
        return false;
    }
    if (!f.open(QIODevice::ReadOnly)) {
        *code = inputError(QStringLiteral("%1: cannot be read (%2)").arg(fileName, f.errorString()));
        return false;
    }
    *text = QString::fromUtf8(f.readAll());
    return true;
}

// A cell on one output line: tabs, line breaks and backslashes escaped.
QString cell(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    text.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    return text;
}

int runScan(const QStringList &args)
{
    Command cmd(QStringLiteral("scan"),
                QStringLiteral("The expert's source scan without a window: prints the review list of a C++ unit's "
                               "string literals (or of its string constants with --const), one tab-separated row "
                               "each, as the review grid shows them. Nothing is rewritten."));
    cmd.parser.addPositionalArgument(QStringLiteral("unit"), QStringLiteral("The C++ source file."));
    QCommandLineOption form(QStringLiteral("form"), QStringLiteral("The form's object name (default: Form1)."),
                            QStringLiteral("name"), QStringLiteral("Form1"));
    QCommandLineOption component(QStringLiteral("component"),
                                 QStringLiteral("The translation component's name (default: Vexil1)."),
                                 QStringLiteral("name"), QStringLiteral("Vexil1"));
    QCommandLineOption ownUnit(QStringLiteral("own-unit"),
                               QStringLiteral("The unit is the form's own: calls go through ui->."));
    QCommandLineOption start(QStringLiteral("start"),
                             QStringLiteral("Lines already in the form's Strings table: identifiers count from it."),
                             QStringLiteral("n"), QStringLiteral("0"));
    QCommandLineOption constMode(QStringLiteral("const"), QStringLiteral("Scan the string constants before the "
                                                                         "first function body."));
    cmd.parser.addOptions({form, component, ownUnit, start, constMode});
    if (int code = cmd.parse(args, 1, 1); code >= 0)
        return code;
    bool ok = false;
    const int counter = cmd.parser.value(start).toInt(&ok);
    if (!ok || counter < 0)
        return usageError(QStringLiteral("--start takes a number of 0 or more"), cmd.name);
    QString source;
    int code = 0;
    if (!readSource(cmd.parser.positionalArguments().at(0), &source, &code))
        return code;
    const QString prefix = Vexil::Expert::callPrefix(cmd.parser.value(form), cmd.parser.value(component),
                                                     cmd.parser.isSet(ownUnit));
    QStringList merged;
    const auto result = cmd.parser.isSet(constMode) ? Vexil::Expert::scanConstSection(source, prefix, &merged)
                                                    : Vexil::Expert::scanStatements(source, prefix, counter);
    if (!result.ok()) {
        out() << result.message << "\n";
        out().flush();
        return ExitOk;
    }
    out() << "String ID:\tString constant:\tWill be replaced by:\tSource line:\n";
    for (const auto &row : result.rows)
        out() << cell(row.id) << '\t' << cell(row.text) << '\t' << cell(row.replacement) << '\t'
              << cell(row.sourceLine.trimmed()) << '\n';
    out().flush();
    return ExitOk;
}

int runUnused(const QStringList &args)
{
    Command cmd(QStringLiteral("unused"),
                QStringLiteral("The expert's unused-identifier check without a window: prints the identifiers of "
                               "the Strings table that no GetText(\"ID\") in the given sources uses."));
    cmd.parser.addPositionalArgument(QStringLiteral("translation-file"), QStringLiteral("The translation file."));
    cmd.parser.addPositionalArgument(QStringLiteral("sources"), QStringLiteral("The C++ sources."),
                                     QStringLiteral("sources..."));
    QCommandLineOption form(QStringLiteral("form"),
                            QStringLiteral("Only this form's Strings (default: every form's, printed with the form)."),
                            QStringLiteral("name"));
    cmd.parser.addOption(form);
    if (int code = cmd.parse(args, 2); code >= 0)
        return code;
    QStringList files = cmd.parser.positionalArguments();
    TvxTranslationTable table;
    int code = 0;
    if (!loadTable(table, files.takeFirst(), &code))
        return code;
    QString source;
    for (const QString &f : std::as_const(files)) {
        QString text;
        if (!readSource(f, &text, &code))
            return code;
        source += text;
        source += QLatin1Char('\n');
    }
    const QString wanted = cmd.parser.value(form);
    // Per form, its Strings table as the component holds it.
    QStringList forms;
    QHash<QString, QStringList> tables;
    for (const TvxEntry &e : table.entries()) {
        if (e.category != stStrings)
            continue;
        const QString f = e.form();
        if (!wanted.isEmpty() && f.compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        if (!tables.contains(f))
            forms << f;
        tables[f] << e.name() + QLatin1Char('\t');
    }
    int count = 0;
    for (const QString &f : std::as_const(forms)) {
        for (const QString &id : Vexil::Expert::unusedIdentifiers(source, tables.value(f), QChar(9))) {
            out() << (wanted.isEmpty() ? f + QLatin1Char('.') + id : id) << "\n";
            ++count;
        }
    }
    err() << count << " unused identifiers\n";
    out().flush();
    err().flush();
    return ExitOk;
}

const char *const Overview =
    "Usage: vexil <command> [options] [arguments]\n"
    "\n"
    "Translation files on the command line.\n"
    "\n"
    "Commands:\n"
    "  export     Write .ts or .po files for translators (one per target language)\n"
    "  import     Take translated .ts or .po files back into a translation file\n"
    "  import-qt  Take a Qt application's own .ts translations into a translation file\n"
    "  stats      Entries, translated and missing texts per form, category and language\n"
    "  validate   Check translation files; exit status 1 on errors\n"
    "  merge      Merge one translation file into another (the second wins)\n"
    "  scan       List a C++ unit's string literals as the expert's review does\n"
    "  unused     List Strings identifiers that no source uses\n"
    "\n"
    "'vexil <command> --help' describes a command.\n"
    "Exit status: 0 done, 1 checks failed, 2 bad arguments, 3 missing or damaged input, 4 output not written.\n";

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vexil"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VEXIL_VERSION));
    QStringList args = QCoreApplication::arguments();
    if (args.size() < 2) {
        err() << Overview;
        return ExitUsage;
    }
    const QString command = args.at(1);
    if (command == QLatin1String("--help") || command == QLatin1String("-h") || command == QLatin1String("help")) {
        out() << Overview;
        return ExitOk;
    }
    if (command == QLatin1String("--version") || command == QLatin1String("-v")) {
        out() << "vexil " << VEXIL_VERSION << "\n";
        return ExitOk;
    }
    args.removeAt(1); // the parsers see "vexil <options and arguments>"
    if (command == QLatin1String("export"))
        return runExport(args);
    if (command == QLatin1String("import"))
        return runImport(args, false);
    if (command == QLatin1String("import-qt"))
        return runImport(args, true);
    if (command == QLatin1String("stats"))
        return runStats(args);
    if (command == QLatin1String("validate"))
        return runValidate(args);
    if (command == QLatin1String("merge"))
        return runMerge(args);
    if (command == QLatin1String("scan"))
        return runScan(args);
    if (command == QLatin1String("unused"))
        return runUnused(args);
    err() << "vexil: unknown command \"" << command << "\"\n\n" << Overview;
    return ExitUsage;
}
