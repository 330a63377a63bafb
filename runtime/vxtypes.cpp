#include "vxtypes.h"

#include "vxstringlist.h"

#include <iterator>

namespace Vexil {

const char *const IniNames[StringsTypeCount] = {
    "Captions", "Hints", "DisplayLabels", "Fonts", "Multilines", "Dialogs",
    "Strings", "Other", "Locales", "Collections", "CharSets", "ListView_TreeView_Items"};

const char *const CategoryPropNames[StringsTypeCount] = {
    "Caption", "Hint", "DisplayLabel", "Font", "TStrings", "Dialog",
    "Strings", "Other", "Locales", "Collections", "CharSets", "ListView_TreeView_Items"};

const char *const HookedProps[3] = {"Caption", "Hint", "DisplayLabel"};

const char *const CategoryTableNames[StringsTypeCount] = {
    "Captions", "Hints", "DisplayLabels", "Fonts", "MultiLines", "DlgsCaptions",
    "Strings", "OtherStrings", "Locales", "Collections", "CharSets", "ListView_TreeView_Items"};

const char *const CHARSETSTR[CharSetCount] = {
    "ANSI_CHARSET", "DEFAULT_CHARSET", "SYMBOL_CHARSET", "MAC_CHARSET",
    "SHIFTJIS_CHARSET", "HANGEUL_CHARSET", "JOHAB_CHARSET", "GB2312_CHARSET",
    "CHINESEBIG5_CHARSET", "GREEK_CHARSET", "TURKISH_CHARSET", "VIETNAMESE_CHARSET",
    "HEBREW_CHARSET", "ARABIC_CHARSET", "BALTIC_CHARSET", "RUSSIAN_CHARSET",
    "THAI_CHARSET", "EASTEUROPE_CHARSET", "OEM_CHARSET"};

const unsigned char CHARSETVALS[CharSetCount] = {
    0, 1, 2, 77, 128, 129, 130, 134, 136, 161, 162, 163, 177, 178, 186, 204, 222, 238, 255};

QString charSetName(int value)
{
    for (int i = 0; i < CharSetCount; ++i) {
        if (CHARSETVALS[i] == value)
            return QLatin1String(CHARSETSTR[i]);
    }
    return QString();
}

int charSetValue(const QString &name)
{
    for (int i = 0; i < CharSetCount; ++i) {
        if (name == QLatin1String(CHARSETSTR[i]))
            return CHARSETVALS[i];
    }
    return -1;
}

QStringList defaultDialogTexts()
{
    static const char *const texts[] = {
        "Warning", "Error", "Information", "Confirm", "&Yes", "&No", "OK", "Cancel",
        "&Abort", "&Retry", "&Ignore", "&All", "N&o To All", "Y&es To All", "&Help",
        "&Open", "Look &in:", "File &name:", "Files of &type:", "&Read-only", "&Save",
        "&Drives:", "Save &in:", "Save as &type:", "&Basic colors:", "&Custom colors:",
        "&Define Custom Colors >>", "Color", "|S&olid", "Hu&e:", "&Sat:", "&Lum:", "&Red:",
        "&Green:", "Bl&ue:", "&Add to Custom Colors", "&Font:", "Font st&yle:", "Si&ze:",
        "&Color:", "&Apply", "Effects", "Stri&keout", "&Underline", "Sample", "Sc&ript:",
        "Printer", "&Name:", "&Properties", "Status:", "Type:", "Where:", "Comment:", "Paper",
        "&Source:", "Orientation", "P&ortrait", "L&andscape", "Print to f&ile", "Print",
        "Pa&ges", "&Selection", "&from:", "&to:", "Copies", "Number of &copies:", "C&ollate",
        "Fi&nd what:", "Match &whole words only", "Match &case", "Direction", "&Up", "&Down",
        "&Find Next", "&Replace", "Replace &All", "Re&place with:", "Picture:", "Preview"};
    QStringList list;
    list.reserve(int(std::size(texts)));
    for (const char *t : texts)
        list << QString::fromLatin1(t);
    return list;
}

QStringList localeItemNames()
{
    return {QStringLiteral("Currency String"), QStringLiteral("Thousand Separator"),
            QStringLiteral("Decimal Separator"), QStringLiteral("Date Separator"),
            QStringLiteral("Short Date Format"), QStringLiteral("Long Date Format"),
            QStringLiteral("Time Separator"), QStringLiteral("Time AM String"),
            QStringLiteral("Time PM String"), QStringLiteral("Short Time Format"),
            QStringLiteral("Long Time Format")};
}

QString dialogKey(const QString &text)
{
    QString key = text;
    const int amp = key.indexOf(QLatin1Char('&'));
    if (amp >= 0)
        key.remove(amp, 1);
    return key;
}

QStringList upperCased(const QStringList &lines)
{
    QStringList upper;
    upper.reserve(lines.size());
    for (const QString &line : lines)
        upper << line.toUpper();
    return upper;
}

void fitLanguageNames(TvxStringList *names, int count)
{
    names->beginUpdate();
    while (names->count() < count)
        names->append(QStringLiteral("LANGUAGE N") + QString::number(names->count() + 1));
    while (names->count() > qMax(count, 0))
        names->removeAt(names->count() - 1);
    names->endUpdate();
}

QString upperKey(const QString &s)
{
    return s.toUpper();
}

size_t qHash(const FoldedKey &key, size_t seed) noexcept
{
    size_t h = seed ^ 0x9e3779b97f4a7c15ull;
    for (QChar c : key.text)
        h = (h ^ c.toCaseFolded().unicode()) * 0x100000001b3ull;
    return h;
}

} // namespace Vexil

namespace {

// Field extraction shared by both public overloads; IsDelim tells whether a
// character separates fields.
template<typename IsDelim>
QString extractField(int n, const QString &s, IsDelim isDelim)
{
    const int len = s.size();
    const QChar *data = s.constData();
    int count = 0;
    int pos = 0;
    while (pos < len) {
        if (isDelim(data[pos]))
            ++pos; // exactly one delimiter is stepped over before a field
        if (pos >= len)
            break;
        if (++count == n) {
            int end = pos;
            while (end < len && !isDelim(data[end]))
                ++end;
            return s.mid(pos, end - pos);
        }
        while (pos < len && !isDelim(data[pos]))
            ++pos;
    }
    return QString();
}

} // namespace

QString ExtractWord(int n, const QString &s, const QString &delims)
{
    return extractField(n, s, [&delims](QChar c) { return delims.contains(c); });
}

QString ExtractWord(int n, const QString &s, QChar delim)
{
    return extractField(n, s, [delim](QChar c) { return c == delim; });
}

QStringView ExtractWordView(int n, QStringView s, QChar delim)
{
    // A plain loop: lines are short, and a view's indexOf() takes the
    // general substring search.
    const char16_t d = delim.unicode();
    const char16_t *p = s.utf16();
    const char16_t *const end = p + s.size();
    int count = 0;
    while (p < end) {
        if (*p == d)
            ++p; // exactly one delimiter is stepped over before a field
        if (p == end)
            break;
        const char16_t *start = p;
        while (p < end && *p != d)
            ++p;
        if (++count == n)
            return QStringView(start, p - start);
    }
    return QStringView();
}

void GetIniNames(QStringList &list)
{
    list.clear();
    for (const char *name : Vexil::IniNames)
        list << QString::fromLatin1(name);
}

QString XorString(const QString &key, const QString &source)
{
    QString result = source;
    if (key.isEmpty() || source.isEmpty())
        return result;
    const int klen = key.size();
    for (int i = 0; i < result.size(); ++i)
        result[i] = QChar(char16_t(source.at(i).unicode() ^ key.at(i % klen).unicode()));
    return result;
}
