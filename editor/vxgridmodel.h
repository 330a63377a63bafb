#pragma once

#include "vexil_export.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <functional>

/// The cells of one translation table as the grid editor shows them: one
/// row per table line, column 0 the line's key and one column per
/// language. It does the grid's work without a widget: cutting lines into
/// cells, joining them back, adding, deleting, clearing and sorting rows,
/// and checking translations against the first language.
///
/// Rows are the table's lines (row 0 is the first line); the column
/// headers ("Components:", the language names) are header data.
class VEXIL_EXPORT TvxGridModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// What a language cell's text differs in from the first language's.
    enum Difference {
        NoDifference = 0,
        PlaceholderDiffers = 0x1, ///< %1 ... %9 used differently
        AcceleratorDiffers = 0x2, ///< one has a "&" mnemonic, the other none
        EndingDiffers = 0x4,      ///< trailing punctuation or blanks differ
    };
    Q_DECLARE_FLAGS(Differences, Difference)

    explicit TvxGridModel(QObject *parent = nullptr);

    /// Fills the model from table @p lines: the key is the text before the
    /// first @p delim, then one cell per language, each field ended by
    /// @p delim. A field missing from the line gives an empty cell; the
    /// last field keeps its text even without its closing delimiter.
    void build(const QStringList &lines, QChar delim, int languages);
    /// The table lines: per row with a non-empty key, every cell followed by
    /// @p delim. Rows whose key is empty are left out.
    QStringList lines(QChar delim) const;

    int languageCount() const { return m_columns - 1; }
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                       int role = Qt::EditRole) override;

    QString cell(int row, int column) const;
    /// Sets a cell's text. Refused (false) for a text holding the table
    /// delimiter, which would shift every later field of the line.
    bool setCell(int row, int column, const QString &text);
    QString key(int row) const { return cell(row, 0); }
    /// The first row whose key is exactly @p key, or -1. Indexed.
    int findKey(const QString &key) const;
    /// Whether every cell of @p row is empty.
    bool isBlankRow(int row) const;

    QString header(int column) const;
    void setHeader(int column, const QString &text);
    /// The headers of the language columns, in order.
    QStringList languageHeaders() const;

    /// Whether the key column can be edited (only the application's strings
    /// are keyed by identifiers the developer chooses).
    bool keysEditable() const { return m_keysEditable; }
    void setKeysEditable(bool on) { m_keysEditable = on; }
    /// Whether language cells can be edited in place.
    bool cellsEditable() const { return m_cellsEditable; }
    void setCellsEditable(bool on) { m_cellsEditable = on; }

    /// Appends a blank row and returns its number.
    int appendRow();
    /// Deletes @p row; rows below move up.
    void removeDataRow(int row);
    /// Deletes every row but one, which is left blank.
    void clearRows();
    /// Sorts ascending by @p column's text (ordinal, case-sensitive); equal
    /// texts keep their order. With @p keepFirst the first row stays where
    /// it is. A column outside the model does nothing.
    void sortByColumn(int column, bool keepFirst);

    /// Whether language cells are checked against the first language.
    bool checksEnabled() const { return m_checks; }
    void setChecksEnabled(bool on);
    Differences differences(int row, int column) const;
    /// Number of language cells with a difference.
    int differenceCount() const { return m_differenceCount; }
    /// The words a tool tip shows for @p d.
    static QString describe(Differences d);
    /// What @p text differs in from @p reference (language 1's text); an
    /// empty text on either side differs in nothing. The grid's marks and
    /// the command-line validation both use it.
    static Differences compareTexts(const QString &reference, const QString &text);

    /// Font of a language cell, by the row's key and the column; an empty
    /// name keeps the view's font.
    void setFontLookup(std::function<QString(const QString &key, int language)> lookup);

Q_SIGNALS:
    void differenceCountChanged(int count);

private:
    QString &at(int row, int column) { return m_cells[qsizetype(row) * m_columns + column]; }
    const QString &at(int row, int column) const { return m_cells[qsizetype(row) * m_columns + column]; }
    void invalidateKeys() { m_keysValid = false; }
    void recheckRow(int row);
    void recheckAll();
    void setDifference(int row, int column, Differences d);

    QList<QString> m_cells; // row-major, m_columns per row
    QChar m_delim = QLatin1Char('\t');
    int m_columns = 2;
    int m_rows = 0;
    QStringList m_headers;
    bool m_keysEditable = false;
    bool m_cellsEditable = true;
    bool m_checks = false;
    QList<quint8> m_differences; // parallel to m_cells
    int m_differenceCount = 0;
    mutable QHash<QString, int> m_keyIndex;
    mutable bool m_keysValid = false;
    std::function<QString(const QString &, int)> m_fontLookup;
    mutable QHash<QString, QString> m_fontCache; // base key + language -> font name
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TvxGridModel::Differences)
