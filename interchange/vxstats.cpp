#include "vxstats.h"

#include <QtCore/QHash>

namespace Vexil::Interchange {

QList<TvxStatsRow> statistics(const TvxTranslationTable &table)
{
    const int languages = std::max(1, table.languageCount());
    struct Counts
    {
        QString form;
        int entries[StringsTypeCount] = {};
        QList<int> translated; // category * languages + language - 1
    };
    QHash<QString, int> formIndex;
    QList<Counts> forms;
    const auto &entries = table.entries();
    for (int i = 0; i < entries.size(); ++i) {
        const TvxEntry &e = entries.at(i);
        const QString form = e.form();
        auto hit = formIndex.constFind(form);
        int f;
        if (hit == formIndex.cend()) {
            f = int(forms.size());
            formIndex.insert(form, f);
            Counts c;
            c.form = form;
            c.translated = QList<int>(StringsTypeCount * languages, 0);
            forms.append(std::move(c));
        } else {
            f = *hit;
        }
        Counts &c = forms[f];
        ++c.entries[e.category];
        const QStringList texts = table.texts(i);
        for (int l = 0; l < languages && l < texts.size(); ++l) {
            if (!texts.at(l).isEmpty())
                ++c.translated[e.category * languages + l];
        }
    }
    QList<TvxStatsRow> rows;
    for (const Counts &c : std::as_const(forms)) {
        for (int cat = 0; cat < StringsTypeCount; ++cat) {
            if (!c.entries[cat])
                continue;
            for (int l = 0; l < languages; ++l)
                rows.append({c.form, TStringsType(cat), l + 1, c.entries[cat], c.translated.at(cat * languages + l)});
        }
    }
    return rows;
}

} // namespace Vexil::Interchange
