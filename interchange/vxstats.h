#pragma once

// How far the translations of a file have come: per form, category and
// language, how many entries there are, how many have a text and how many lack one.

#include "vxtranslationtable.h"

namespace Vexil::Interchange {

struct TvxStatsRow
{
    QString form;
    TStringsType category = stCaptions;
    int language = 1;
    int entries = 0;
    int translated = 0;
    int missing() const { return entries - translated; }
};

/// Rows grouped by form (in the order forms first appear), then category,
/// then language 1 .. languageCount().
QList<TvxStatsRow> statistics(const TvxTranslationTable &table);

} // namespace Vexil::Interchange
