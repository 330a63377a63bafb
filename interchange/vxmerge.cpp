#include "vxmerge.h"

namespace Vexil::Interchange {

TvxMergeReport mergeTables(TvxTranslationTable &into, const TvxTranslationTable &from, const Progress &progress)
{
    TvxMergeReport report;
    for (int n = int(into.languageNames().size()) + 1; n <= from.languageNames().size(); ++n)
        into.setLanguageName(n, from.languageNames().at(n - 1));
    const auto &entries = from.entries();
    const qint64 total = entries.size();
    for (int i = 0; i < entries.size(); ++i) {
        if (progress && (i + 1) % 4096 == 0)
            progress(i + 1, total);
        const TvxEntry &e = entries.at(i);
        const QStringList texts = from.texts(i);
        const int at = into.indexOf(e.category, e.key);
        if (at >= 0 && into.texts(at) == texts) {
            ++report.unchanged;
            continue;
        }
        if (at >= 0)
            ++report.replaced;
        else
            ++report.added;
        into.setTexts(e.category, e.key, texts);
    }
    if (progress)
        progress(total, total);
    return report;
}

} // namespace Vexil::Interchange
