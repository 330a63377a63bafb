#pragma once

#include "vxstringlist.h"

// The keys of a table's lines (tab-delimited), in line order.
inline QStringList keys(const TvxStringList *list)
{
    QStringList k;
    for (const QString &line : list->lines())
        k << line.section(QLatin1Char('\t'), 0, 0);
    return k;
}
