#include "vxvalidate.h"

#include "vxfileformat.h"
#include "vxgridmodel.h"

namespace Vexil::Interchange {

QList<TvxIssue> validate(const TvxTranslationTable &table, QChar tableDelimiter)
{
    QList<TvxIssue> issues;
    const int expected = table.languageNames().isEmpty() ? table.languageCount() : int(table.languageNames().size());
    const QChar delim = table.delimiter();
    const auto &entries = table.entries();
    for (int i = 0; i < entries.size(); ++i) {
        const TvxEntry &e = entries.at(i);
        auto add = [&](TvxIssue::Severity s, int language, const QString &message) {
            issues.append({s, e.category, e.key, language, message});
        };
        if (!e.value.contains(delim)) {
            add(TvxIssue::Warning, 0,
                QStringLiteral("the value holds one text and no delimiter \"%1\"; it stands for languages 1 and 2")
                    .arg(delim));
        }
        const QStringList texts = table.texts(i);
        if (texts.size() != expected && e.value.contains(delim)) {
            add(TvxIssue::Error, 0,
                QStringLiteral("%1 texts for %2 languages").arg(texts.size()).arg(expected)
                    + (texts.size() > expected ? QStringLiteral(" (a delimiter inside a text?)") : QString()));
        }
        if (e.value.contains(Vexil::FileFormat::DelimInText))
            add(TvxIssue::Warning, 0, QStringLiteral("a text holds the file delimiter \"%1\"").arg(delim));
        for (int l = 0; l < texts.size(); ++l) {
            const QString &text = texts.at(l);
            if (text.contains(tableDelimiter)) {
                add(TvxIssue::Error, l + 1,
                    tableDelimiter == QChar(9) ? QStringLiteral("the text holds a tab, the components' delimiter")
                                               : QStringLiteral("the text holds the components' delimiter \"%1\"")
                                                     .arg(tableDelimiter));
            }
            if (l == 0)
                continue;
            const auto d = TvxGridModel::compareTexts(texts.at(0), text);
            if (d) {
                QString why = TvxGridModel::describe(d);
                why.replace(QLatin1Char('\n'), QLatin1Char(' '));
                add(TvxIssue::Warning, l + 1, why);
            }
        }
    }
    return issues;
}

} // namespace Vexil::Interchange
