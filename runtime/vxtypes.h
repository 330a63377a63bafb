#pragma once

#include "vexil_export.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The translation categories. Their order indexes every table of the suite.
enum TStringsType {
    stCaptions,
    stHints,
    stDisplayLabels,
    stFonts,
    stMultiLines,
    stDlgsCaptions,
    stStrings,
    stOtherStrings,
    stLocales,
    stCollections,
    stCharSets,
    stListView_TreeView_Items
};

constexpr int StringsTypeCount = stListView_TreeView_Items + 1;

class TvxStringList;

namespace Vexil {

/// Section words of a translation file, one per category.
VEXIL_EXPORT extern const char *const IniNames[StringsTypeCount];
/// Property words the property scan collects, one per category.
VEXIL_EXPORT extern const char *const CategoryPropNames[StringsTypeCount];
/// Property names the first three categories translate.
VEXIL_EXPORT extern const char *const HookedProps[3];
/// Table property names, i.e. the category member names without their "st".
VEXIL_EXPORT extern const char *const CategoryTableNames[StringsTypeCount];

constexpr int CharSetCount = 19;
/// Character-set names, parallel to CHARSETVALS.
VEXIL_EXPORT extern const char *const CHARSETSTR[CharSetCount];
/// Character-set values, parallel to CHARSETSTR.
VEXIL_EXPORT extern const unsigned char CHARSETVALS[CharSetCount];

/// Name of a character-set value, or an empty string when the value is unknown.
VEXIL_EXPORT QString charSetName(int value);
/// Value of a character-set name (exact comparison), or -1 when unknown.
VEXIL_EXPORT int charSetValue(const QString &name);

/// The 79 English texts of the standard dialogs, in table order.
VEXIL_EXPORT QStringList defaultDialogTexts();
/// Number of leading dialog texts that belong to the message dialogs.
constexpr int MessageDialogTextCount = 15;
/// Item names of the eleven locale lines.
VEXIL_EXPORT QStringList localeItemNames();

/// A dialog key: the text with its first '&' removed.
VEXIL_EXPORT QString dialogKey(const QString &text);

/// Every line upper-cased: language names are stored in capitals.
VEXIL_EXPORT QStringList upperCased(const QStringList &lines);

/// Adds "LANGUAGE N<n>" names to @p names or cuts them from the end until
/// there are @p count of them.
VEXIL_EXPORT void fitLanguageNames(TvxStringList *names, int count);

/// Upper-cases a key the way every table comparison does.
VEXIL_EXPORT QString upperKey(const QString &s);

/// A view of a name that hashes and compares without regard to letter
/// case, for sets and indexes that must not allocate per look-up. The
/// viewed text must outlive the key.
struct FoldedKey
{
    QStringView text;
    bool operator==(const FoldedKey &other) const
    {
        return text.compare(other.text, Qt::CaseInsensitive) == 0;
    }
};
VEXIL_EXPORT size_t qHash(const FoldedKey &key, size_t seed = 0) noexcept;

} // namespace Vexil

/// Field @p n (from 1) of @p s split by any character of @p delims.
/// Exactly one delimiter is skipped before each field, so adjacent
/// delimiters enclose an empty field; a leading delimiter is skipped
/// before field 1 and a trailing one adds no field.
VEXIL_EXPORT QString ExtractWord(int n, const QString &s, const QString &delims);
/// Convenience overload for a single delimiter.
VEXIL_EXPORT QString ExtractWord(int n, const QString &s, QChar delim);
/// ExtractWord() of a single delimiter as a view into @p s, built with
/// no string: the look-ups and switches read fields this way.
VEXIL_EXPORT QStringView ExtractWordView(int n, QStringView s, QChar delim);

/// Clears @p list and fills it with the twelve section words in category order.
VEXIL_EXPORT void GetIniNames(QStringList &list);

/// Each character of @p source exclusive-or'ed with the key's character at
/// the same position modulo the key length. Applying it twice restores the source.
VEXIL_EXPORT QString XorString(const QString &key, const QString &source);
