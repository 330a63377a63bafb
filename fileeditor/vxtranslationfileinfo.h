#pragma once

#include "vxtypes.h"

#include <QtCore/QChar>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a translation file holds, as the file editor lists it: its
/// delimiter, its languages, the forms whose entries it keeps and the
/// category sections present. Read in one pass over the file.
struct TvxTranslationFileInfo
{
    QString fileName;
    /// "OPTIONS"/"DELIMITER", or "|" when the file names none.
    QChar delimiter = QLatin1Char('|');
    /// "Language_1", "Language_2" ... up to the first empty one.
    QStringList languageNames;
    /// The languages the tables need: the named ones, or more when some
    /// entry holds more texts than there are names (so none is dropped).
    int languageCount = 1;
    /// The key prefixes before the first "." over all category sections,
    /// each once (compared as written, as loading matches them), sorted
    /// without regard to case.
    QStringList forms;
    /// The category sections present, in category order.
    QList<TStringsType> categories;

    /// Reads @p fileName. Returns false with a message in @p error when the
    /// file does not exist or cannot be read; nothing is changed then.
    bool read(const QString &fileName, QString *error);

    /// The category a section or category name stands for: the file's
    /// section words, the tables' names and the run-time editor's names,
    /// without regard to case. -1 for none.
    static int categoryOf(const QString &name);
    /// The section word of @p kind ("Captions", "Dialogs", "Other" ...).
    static QString sectionName(TStringsType kind);
};
