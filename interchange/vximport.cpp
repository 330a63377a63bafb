#include "vximport.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace Vexil::Interchange {

namespace {

bool sameLanguageCode(const QString &a, const QString &b)
{
    if (a.isEmpty() || b.isEmpty())
        return false;
    QString x = a, y = b;
    x.replace(QLatin1Char('-'), QLatin1Char('_'));
    y.replace(QLatin1Char('-'), QLatin1Char('_'));
    if (x.compare(y, Qt::CaseInsensitive) == 0)
        return true;
    // "de" matches "de_DE" when one side names no country.
    const QString xl = x.section(QLatin1Char('_'), 0, 0), yl = y.section(QLatin1Char('_'), 0, 0);
    return xl.compare(yl, Qt::CaseInsensitive) == 0 && (!x.contains(QLatin1Char('_')) || !y.contains(QLatin1Char('_')));
}

// The language of the table named @p what (a name or a code), -1 for none.
int languageNamed(const TvxTranslationTable &table, const QString &what)
{
    for (int n = 1; n <= table.languageCount(); ++n) {
        if (table.languageName(n).compare(what, Qt::CaseInsensitive) == 0)
            return n;
    }
    for (int n = 1; n <= table.languageCount(); ++n) {
        if (sameLanguageCode(languageCode(table.languageName(n)), what))
            return n;
    }
    return -1;
}

constexpr qint64 ProgressStep = 4096;

} // namespace

int targetLanguage(const TvxTranslationTable &table, const QString &requested, const QString &fileLanguage,
                   const QString &fileName, bool allowNew, QString *error)
{
    auto fail = [error](const QString &message) {
        if (error)
            *error = message;
        return -1;
    };
    const int count = table.languageCount();
    if (!requested.isEmpty()) {
        bool ok = false;
        const int n = requested.toInt(&ok);
        if (ok) {
            if (n >= 2 && (n <= count || (allowNew && n == count + 1)))
                return n;
            return fail(QStringLiteral("language %1 is not a target language of %2 (it has languages 1 to %3; "
                                       "language 1 is the source)")
                            .arg(requested, table.fileName())
                            .arg(count));
        }
        const int named = languageNamed(table, requested);
        if (named == 1)
            return fail(QStringLiteral("\"%1\" is language 1, the source language of %2").arg(requested, table.fileName()));
        if (named > 1)
            return named;
        if (allowNew && !languageNameOf(requested).isEmpty())
            return count + 1;
        return fail(QStringLiteral("%1 has no language \"%2\"").arg(table.fileName(), requested));
    }
    if (!fileLanguage.isEmpty()) {
        const int named = languageNamed(table, fileLanguage);
        if (named > 1)
            return named;
        if (named < 0 && allowNew && !languageNameOf(fileLanguage).isEmpty())
            return count + 1;
    }
    static const QRegularExpression numbered(QStringLiteral("_(\\d+)$"));
    const auto match = numbered.match(QFileInfo(fileName).completeBaseName());
    if (match.hasMatch()) {
        const int n = match.captured(1).toInt();
        if (n >= 2 && n <= count)
            return n;
    }
    if (count == 2)
        return 2;
    return fail(QStringLiteral("cannot tell which language of %1 the file %2 holds%3; name it with --language")
                    .arg(table.fileName(), fileName,
                         fileLanguage.isEmpty() ? QString() : QStringLiteral(" (\"%1\")").arg(fileLanguage)));
}

TvxImportReport importMessages(TvxTranslationTable &table, const TvxMessageFile &file, int language,
                               const Progress &progress)
{
    TvxImportReport report;
    const qint64 total = file.messages.size();
    qint64 done = 0;
    // Messages come grouped by context: its form and category are worked out once per run.
    QString lastContext, form;
    TStringsType category = stCaptions;
    bool contextOk = false;
    for (const TvxMessage &m : file.messages) {
        if (progress && ++done % ProgressStep == 0)
            progress(done, total);
        if (m.obsolete) {
            ++report.obsolete;
            continue;
        }
        if (m.context != lastContext || lastContext.isNull()) {
            lastContext = m.context.isNull() ? QLatin1String("") : m.context;
            contextOk = splitMessageContext(m.context, &form, &category);
        }
        auto where = [&m] { return QStringLiteral("line %1: %2 %3").arg(m.line).arg(m.context, m.comment); };
        int entry = -1;
        if (contextOk && !m.comment.isEmpty())
            entry = table.indexOf(category, m.comment);
        if (entry < 0 || table.entries().at(entry).form().compare(form, Qt::CaseInsensitive) != 0) {
            report.unmatched << where();
            continue;
        }
        if (!m.finished || m.translation.isEmpty()) {
            ++report.unfinished;
            continue;
        }
        if (table.text(entry, 1) != m.source) {
            report.sourceChanged << where();
            continue;
        }
        if (!TvxTranslationTable::canStore(m.translation)) {
            report.unstorable << where();
            continue;
        }
        if (table.setText(entry, language, m.translation))
            ++report.updated;
        else
            ++report.unchanged;
    }
    if (progress)
        progress(total, total);
    return report;
}

TvxImportReport importQtMessages(TvxTranslationTable &table, const TvxMessageFile &file, int language,
                                 const Progress &progress)
{
    TvxImportReport report;
    // Form (upper-cased) and language-1 text -> the entries that show it.
    QHash<QString, QHash<QString, QList<int>>> bySource;
    const auto &entries = table.entries();
    for (int i = 0; i < entries.size(); ++i) {
        const QString source = table.text(i, 1);
        if (!source.isEmpty())
            bySource[entries.at(i).form().toUpper()][source].append(i);
    }
    const qint64 total = file.messages.size();
    qint64 done = 0;
    for (const TvxMessage &m : file.messages) {
        if (progress && ++done % ProgressStep == 0)
            progress(done, total);
        if (m.obsolete) {
            ++report.obsolete;
            continue;
        }
        const auto form = bySource.constFind(m.context.toUpper());
        const QList<int> *hits = nullptr;
        if (form != bySource.cend()) {
            const auto hit = form->constFind(m.source);
            if (hit != form->cend())
                hits = &*hit;
        }
        if (!hits) {
            report.unmatched << QStringLiteral("line %1: %2 \"%3\"").arg(m.line).arg(m.context, m.source);
            continue;
        }
        if (!m.finished || m.translation.isEmpty()) {
            ++report.unfinished;
            continue;
        }
        if (!TvxTranslationTable::canStore(m.translation)) {
            report.unstorable << QStringLiteral("line %1: %2 \"%3\"").arg(m.line).arg(m.context, m.source);
            continue;
        }
        for (int entry : *hits) {
            if (table.setText(entry, language, m.translation))
                ++report.updated;
            else
                ++report.unchanged;
        }
    }
    if (progress)
        progress(total, total);
    return report;
}

} // namespace Vexil::Interchange
