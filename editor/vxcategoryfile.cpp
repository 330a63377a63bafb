// The grid editor's file commands: one category of one form written from
// the grid's cells into a translation file, and read back into them.
#include "vxcategoryfile.h"

#include "memini.h"
#include "vxerrors.h"
#include "vxfileformat.h"
#include "vxgridmodel.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

using namespace Vexil::FileFormat;

namespace {

const QString noInformation = QStringLiteral("There are no information for this property in selected file!");

// The grid as it stood, so that a load that fails half-way can put it back.
struct GridState
{
    QStringList headers; // every column's, key column included
    QList<QStringList> rows;
    QChar fileDelim;

    GridState(const TvxGridModel &grid, QChar delim) : fileDelim(delim)
    {
        const int columns = grid.columnCount();
        for (int c = 0; c < columns; ++c)
            headers << grid.header(c);
        rows.reserve(grid.rowCount());
        for (int r = 0; r < grid.rowCount(); ++r) {
            QStringList cells;
            cells.reserve(columns);
            for (int c = 0; c < columns; ++c)
                cells << grid.cell(r, c);
            rows << cells;
        }
    }

    void restore(TvxGridModel &grid, QChar &delim) const
    {
        delim = fileDelim;
        for (int c = 0; c < headers.size(); ++c)
            grid.setHeader(c, headers.at(c));
        grid.clearRows();
        for (int r = 0; r < rows.size(); ++r) {
            const int row = r == 0 ? 0 : grid.appendRow();
            for (int c = 0; c < rows.at(r).size(); ++c)
                grid.setCell(row, c, rows.at(r).at(c));
        }
        if (rows.isEmpty())
            grid.removeDataRow(0);
    }
};

struct OwnEntry
{
    QString key; // the row key: no form prefix, brackets restored
    QString value;
};

// The entries of the section that belong to the form, an entry keyed by the
// bare prefix first. Keys of the older form (the object name) are tried
// before the current prefix, as the component's own load does.
QList<OwnEntry> ownEntries(const TMemIniFile &ini, const QString &section, const TvxCategoryFile::Target &target)
{
    const QString oldPrefix = target.ownerName.isEmpty() ? QString() : target.ownerName + QLatin1Char('.');
    const QString newPrefix = target.filePrefix + QLatin1Char('.');
    const bool bracketed = isBracketed(target.kind);
    QList<OwnEntry> front;
    QList<OwnEntry> rest;
    for (const Entry &entry : sectionEntries(ini, section)) {
        if (isMissingValue(entry.value))
            continue;
        int cut;
        if (!oldPrefix.isEmpty() && entry.key.startsWith(oldPrefix))
            cut = int(oldPrefix.size());
        else if (entry.key.startsWith(newPrefix))
            cut = int(newPrefix.size());
        else
            continue; // another form's entry
        QString key = entry.key.mid(cut);
        if (key.isEmpty()) {
            front.append({key, entry.value});
            continue;
        }
        rest.append({bracketed ? unescapeBrackets(key) : key, entry.value});
    }
    return front + rest;
}

// Puts one entry's texts into a row: the value cut at the file delimiter,
// one field per language; a value without any delimiter is every
// language's text.
bool fillRow(TvxGridModel &grid, int row, const OwnEntry &entry, QChar fileDelim)
{
    bool ok = grid.setCell(row, 0, entry.key);
    const int languages = grid.columnCount() - 1;
    if (!entry.value.contains(fileDelim)) {
        const QString text = decodeText(entry.value, fileDelim);
        for (int c = 1; c <= languages; ++c)
            ok = grid.setCell(row, c, text) && ok;
        return ok;
    }
    const QList<QStringView> fields = QStringView(entry.value).split(fileDelim);
    for (int c = 1; c <= languages; ++c) {
        const QString text = c - 1 < fields.size() ? decodeText(fields.at(c - 1).toString(), fileDelim) : QString();
        ok = grid.setCell(row, c, text) && ok;
    }
    return ok;
}

} // namespace

QString TvxCategoryFile::section(TStringsType kind, const QString &categoryName)
{
    switch (kind) {
    case stCaptions:
        return QStringLiteral("Captions");
    case stHints:
        return QStringLiteral("Hints");
    case stDisplayLabels:
        return QStringLiteral("DisplayLabels");
    case stFonts:
        return QStringLiteral("Fonts");
    case stMultiLines:
        return QStringLiteral("MultiLines");
    case stDlgsCaptions:
        return QStringLiteral("Dialogs");
    case stStrings:
        return QStringLiteral("STRINGS");
    case stOtherStrings:
        return QStringLiteral("Other");
    case stLocales:
        return QStringLiteral("Locales");
    case stCharSets:
        return QStringLiteral("CharSets");
    case stCollections:
        // A collection-type property's items share the item section.
        if (categoryName == QLatin1String("Collections"))
            return QStringLiteral("Collections");
        return QStringLiteral("ListView_TreeView_Items");
    case stListView_TreeView_Items:
        return QStringLiteral("ListView_TreeView_Items");
    }
    return QString();
}

void TvxCategoryFile::save(const TvxGridModel &grid, const Target &target, const QString &fileName, QChar fileDelim)
{
    const QString sect = section(target.kind, target.categoryName);
    if (sect.isEmpty())
        return;
    if (isReservedDelimiter(fileDelim))
        throw EVexilError(QStringLiteral("Cannot save \"%1\": the file delimiter (character %2) is reserved by "
                                         "the file format")
                              .arg(fileName)
                              .arg(fileDelim.unicode()));

    TMemIniFile ini(fileName);
    ini.EraseSection(OptionsSection);
    writeHeader(ini, fileDelim, grid.languageHeaders());

    const bool bracketed = isBracketed(target.kind);
    const int columns = grid.columnCount();
    const QString prefix = target.filePrefix + QLatin1Char('.');
    // File keys ignore letter case: two rows whose keys differ only in case
    // would be one entry, and the first row's texts would be lost.
    QSet<Vexil::FoldedKey> written;
    written.reserve(grid.rowCount());
    QStringList keys; // owns the texts the set views
    keys.reserve(grid.rowCount());
    for (int row = 0; row < grid.rowCount(); ++row) {
        if (grid.isBlankRow(row))
            continue;
        const QString name = grid.key(row);
        keys << prefix + name;
        const QString &key = keys.constLast();
        QString texts;
        QString value;
        for (int c = 1; c < columns; ++c) {
            const QString cell = grid.cell(row, c);
            texts += cell;
            value += encodeText(cell, fileDelim) + fileDelim;
        }
        // Nothing is written that would load back different: the save is
        // refused before the file is touched.
        if (const char *fault = entryFault(key, name, texts, bracketed))
            refuseSave(ini, sect, key, fault);
        if (written.contains(Vexil::FoldedKey{key}))
            refuseSave(ini, sect, key, "more than one row has this key (keys are compared without regard to case)");
        written.insert(Vexil::FoldedKey{key});
        ini.WriteString(sect, bracketed ? prefix + escapeBrackets(name) : key, value);
    }

    removeOlderKeys(ini, sect, target.ownerName, target.filePrefix);
    ini.UpdateFile();
}

void TvxCategoryFile::load(TvxGridModel &grid, const Target &target, const QString &fileName, QChar &fileDelim,
                           const std::function<Answer(const QString &key)> &askOverwrite)
{
    const QString sect = section(target.kind, target.categoryName);
    if (sect.isEmpty())
        return;
    const TMemIniFile ini(fileName);
    const QList<OwnEntry> entries = ownEntries(ini, sect, target);
    if (entries.isEmpty())
        throw EVexilError(noInformation);

    const GridState before(grid, fileDelim);
    try {
        fileDelim = readDelimiter(ini, fileDelim);
        for (int c = 1; c < grid.columnCount(); ++c) {
            const QString name = readLanguageName(ini, c);
            if (name.isEmpty())
                break;
            grid.setHeader(c, name);
        }

        grid.clearRows();
        // The rows this load has filled, by key. Every row is one of them
        // once the grid is cleared.
        QHash<QString, int> rows;
        rows.reserve(entries.size());
        for (const OwnEntry &entry : entries) {
            int row = entry.key.isEmpty() ? -1 : rows.value(entry.key, -1);
            if (row >= 0) {
                const Answer answer = askOverwrite ? askOverwrite(entry.key) : Yes;
                if (answer == Cancel)
                    return; // rows handled so far keep their texts
                if (answer == No)
                    continue;
            } else {
                const int last = grid.rowCount() - 1;
                row = last >= 0 && grid.isBlankRow(last) ? last : grid.appendRow();
                if (!entry.key.isEmpty())
                    rows.insert(entry.key, row);
            }
            if (!fillRow(grid, row, entry, fileDelim))
                throw EVexilError(QStringLiteral("Cannot load \"%1\" from section \"%2\" of \"%3\": a key or text "
                                                 "holds the grid's line delimiter")
                                      .arg(entry.key, sect, fileName));
        }
    } catch (...) {
        before.restore(grid, fileDelim);
        throw;
    }
}
