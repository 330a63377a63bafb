#include "vxgridmodel.h"

#include <QtGui/QBrush>
#include <QtGui/QColor>
#include <QtGui/QFont>

#include <algorithm>
#include <numeric>

namespace {

// Which of %1 ... %9 a text uses, one bit each.
unsigned placeholders(QStringView text)
{
    unsigned used = 0;
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('%'))
            continue;
        const QChar next = text.at(i + 1);
        if (next == QLatin1Char('%')) {
            ++i; // "%%" is a percent sign
        } else if (next >= QLatin1Char('1') && next <= QLatin1Char('9')) {
            used |= 1u << (next.unicode() - '1');
        }
    }
    return used;
}

// Whether a text has a mnemonic "&" ("&&" stands for an ampersand).
bool hasAccelerator(QStringView text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('&'))
            continue;
        if (text.at(i + 1) == QLatin1Char('&'))
            ++i;
        else
            return true;
    }
    return false;
}

// The run of punctuation and blanks a text ends with.
QStringView ending(QStringView text)
{
    qsizetype i = text.size();
    while (i > 0 && (text.at(i - 1).isPunct() || text.at(i - 1).isSpace()))
        --i;
    return text.mid(i);
}

TvxGridModel::Differences compare(const QString &reference, const QString &text)
{
    TvxGridModel::Differences d;
    if (reference.isEmpty() || text.isEmpty())
        return d; // an untranslated cell is not a wrong one
    if (placeholders(reference) != placeholders(text))
        d |= TvxGridModel::PlaceholderDiffers;
    if (hasAccelerator(reference) != hasAccelerator(text))
        d |= TvxGridModel::AcceleratorDiffers;
    if (ending(reference) != ending(text))
        d |= TvxGridModel::EndingDiffers;
    return d;
}

} // namespace

TvxGridModel::TvxGridModel(QObject *parent)
    : QAbstractTableModel(parent)
{
    m_headers.resize(m_columns);
}

void TvxGridModel::build(const QStringList &lines, QChar delim, int languages)
{
    beginResetModel();
    m_delim = delim;
    m_columns = std::max(languages, 1) + 1;
    m_rows = int(lines.size());
    m_cells = QList<QString>(qsizetype(m_rows) * m_columns);
    for (int r = 0; r < m_rows; ++r) {
        const QStringView line(lines.at(r));
        QString *row = m_cells.data() + qsizetype(r) * m_columns;
        qsizetype from = line.indexOf(delim);
        if (from < 0) {
            row[0] = line.toString();
            continue;
        }
        row[0] = line.left(from).toString();
        ++from;
        for (int c = 1; c < m_columns && from < line.size(); ++c) {
            const qsizetype end = line.indexOf(delim, from);
            if (end < 0) {
                // The last text keeps its place even without its closing delimiter.
                row[c] = line.mid(from).toString();
                break;
            }
            row[c] = line.mid(from, end - from).toString();
            from = end + 1;
        }
    }
    m_headers = QStringList(m_columns);
    for (int c = 1; c < m_columns; ++c)
        m_headers[c] = QStringLiteral("Language N") + QString::number(c);
    invalidateKeys();
    m_fontCache.clear();
    recheckAll();
    endResetModel();
}

QStringList TvxGridModel::lines(QChar delim) const
{
    QStringList result;
    result.reserve(m_rows);
    for (int r = 0; r < m_rows; ++r) {
        if (at(r, 0).isEmpty())
            continue;
        qsizetype size = m_columns;
        for (int c = 0; c < m_columns; ++c)
            size += at(r, c).size();
        QString line;
        line.reserve(size);
        for (int c = 0; c < m_columns; ++c) {
            line += at(r, c);
            line += delim;
        }
        result.append(line);
    }
    return result;
}

int TvxGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int TvxGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns;
}

QVariant TvxGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows || index.column() >= m_columns)
        return {};
    const int row = index.row();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return at(row, column);
    case Qt::ToolTipRole: {
        const Differences d = differences(row, column);
        return d ? QVariant(describe(d)) : QVariant();
    }
    case Qt::BackgroundRole:
        if (differences(row, column))
            return QBrush(QColor(255, 226, 186));
        return {};
    case Qt::FontRole: {
        if (column == 0 || !m_fontLookup)
            return {};
        const QString &k = at(row, 0);
        const qsizetype dot = k.indexOf(QLatin1Char('.'));
        const QString base = dot < 0 ? k : k.left(dot);
        const QString cacheKey = base + QChar(1) + QString::number(column);
        auto it = m_fontCache.constFind(cacheKey);
        if (it == m_fontCache.cend())
            it = m_fontCache.insert(cacheKey, m_fontLookup(base, column));
        if (it->isEmpty())
            return {};
        QFont font;
        font.setFamilies({*it});
        return font;
    }
    default:
        return {};
    }
}

bool TvxGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid())
        return false;
    return setCell(index.row(), index.column(), value.toString());
}

Qt::ItemFlags TvxGridModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == 0 ? m_keysEditable : m_cellsEditable)
        f |= Qt::ItemIsEditable;
    return f;
}

QVariant TvxGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns)
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return m_headers.at(section);
    return {};
}

bool TvxGridModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value, int role)
{
    if (orientation != Qt::Horizontal || role != Qt::EditRole || section < 0 || section >= m_columns)
        return false;
    setHeader(section, value.toString());
    return true;
}

QString TvxGridModel::cell(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < 0 || column >= m_columns)
        return {};
    return at(row, column);
}

bool TvxGridModel::setCell(int row, int column, const QString &text)
{
    if (row < 0 || row >= m_rows || column < 0 || column >= m_columns || text.contains(m_delim))
        return false;
    if (at(row, column) == text)
        return true;
    at(row, column) = text;
    if (column == 0) {
        invalidateKeys();
        m_fontCache.clear();
    }
    const int before = m_differenceCount;
    if (column <= 1)
        recheckRow(row);
    else
        setDifference(row, column, compare(at(row, 1), text));
    if (column == 0)
        Q_EMIT dataChanged(index(row, 0), index(row, m_columns - 1));
    else if (column == 1)
        Q_EMIT dataChanged(index(row, 1), index(row, m_columns - 1));
    else
        Q_EMIT dataChanged(index(row, column), index(row, column));
    if (before != m_differenceCount)
        Q_EMIT differenceCountChanged(m_differenceCount);
    return true;
}

int TvxGridModel::findKey(const QString &key) const
{
    if (!m_keysValid) {
        m_keyIndex.clear();
        m_keyIndex.reserve(m_rows);
        for (int r = m_rows - 1; r >= 0; --r)
            m_keyIndex.insert(at(r, 0), r); // the first row of a key wins
        m_keysValid = true;
    }
    return m_keyIndex.value(key, -1);
}

bool TvxGridModel::isBlankRow(int row) const
{
    if (row < 0 || row >= m_rows)
        return false;
    for (int c = 0; c < m_columns; ++c) {
        if (!at(row, c).isEmpty())
            return false;
    }
    return true;
}

QString TvxGridModel::header(int column) const
{
    return column >= 0 && column < m_columns ? m_headers.at(column) : QString();
}

void TvxGridModel::setHeader(int column, const QString &text)
{
    if (column < 0 || column >= m_columns || m_headers.at(column) == text)
        return;
    m_headers[column] = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

QStringList TvxGridModel::languageHeaders() const
{
    return m_headers.mid(1);
}

int TvxGridModel::appendRow()
{
    beginInsertRows(QModelIndex(), m_rows, m_rows);
    m_cells.resize(m_cells.size() + m_columns);
    if (m_checks)
        m_differences.resize(m_cells.size());
    ++m_rows;
    invalidateKeys();
    endInsertRows();
    return m_rows - 1;
}

void TvxGridModel::removeDataRow(int row)
{
    if (row < 0 || row >= m_rows)
        return;
    beginRemoveRows(QModelIndex(), row, row);
    const qsizetype from = qsizetype(row) * m_columns;
    const int before = m_differenceCount;
    if (m_checks) {
        for (int c = 0; c < m_columns; ++c) {
            if (m_differences.at(from + c))
                --m_differenceCount;
        }
        m_differences.remove(from, m_columns);
    }
    m_cells.remove(from, m_columns);
    --m_rows;
    invalidateKeys();
    endRemoveRows();
    if (before != m_differenceCount)
        Q_EMIT differenceCountChanged(m_differenceCount);
}

void TvxGridModel::clearRows()
{
    beginResetModel();
    m_rows = 1;
    m_cells = QList<QString>(m_columns);
    const int before = m_differenceCount;
    m_differenceCount = 0;
    if (m_checks)
        m_differences = QList<quint8>(m_columns, 0);
    invalidateKeys();
    endResetModel();
    if (before)
        Q_EMIT differenceCountChanged(0);
}

void TvxGridModel::sortByColumn(int column, bool keepFirst)
{
    if (column < 0 || column >= m_columns)
        return;
    const int start = keepFirst ? 1 : 0;
    if (m_rows - start < 2)
        return;
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    QList<int> order(m_rows);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin() + start, order.end(),
                     [this, column](int a, int b) { return at(a, column) < at(b, column); });

    QList<QString> cells(m_cells.size());
    QList<quint8> differences(m_checks ? m_cells.size() : 0);
    QList<int> newRowOf(m_rows);
    for (int r = 0; r < m_rows; ++r) {
        const int old = order.at(r);
        newRowOf[old] = r;
        for (int c = 0; c < m_columns; ++c) {
            cells[qsizetype(r) * m_columns + c] = std::move(m_cells[qsizetype(old) * m_columns + c]);
            if (m_checks)
                differences[qsizetype(r) * m_columns + c] = m_differences.at(qsizetype(old) * m_columns + c);
        }
    }
    m_cells = std::move(cells);
    m_differences = std::move(differences);
    invalidateKeys();

    const QModelIndexList persistent = persistentIndexList();
    QModelIndexList moved;
    moved.reserve(persistent.size());
    for (const QModelIndex &i : persistent)
        moved.append(index(newRowOf.at(i.row()), i.column()));
    changePersistentIndexList(persistent, moved);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void TvxGridModel::setChecksEnabled(bool on)
{
    if (m_checks == on)
        return;
    m_checks = on;
    const int before = m_differenceCount;
    recheckAll();
    if (m_rows)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, m_columns - 1));
    if (before != m_differenceCount)
        Q_EMIT differenceCountChanged(m_differenceCount);
}

TvxGridModel::Differences TvxGridModel::differences(int row, int column) const
{
    if (!m_checks || row < 0 || row >= m_rows || column < 0 || column >= m_columns)
        return {};
    return Differences(m_differences.at(qsizetype(row) * m_columns + column));
}

TvxGridModel::Differences TvxGridModel::compareTexts(const QString &reference, const QString &text)
{
    return compare(reference, text);
}

QString TvxGridModel::describe(Differences d)
{
    QStringList parts;
    if (d & PlaceholderDiffers)
        parts << tr("The placeholders (%1 ... %9) differ from the first language's.");
    if (d & AcceleratorDiffers)
        parts << tr("The accelerator (&) differs from the first language's.");
    if (d & EndingDiffers)
        parts << tr("The closing punctuation or blanks differ from the first language's.");
    return parts.join(QLatin1Char('\n'));
}

void TvxGridModel::setFontLookup(std::function<QString(const QString &, int)> lookup)
{
    m_fontLookup = std::move(lookup);
    m_fontCache.clear();
}

void TvxGridModel::recheckRow(int row)
{
    if (!m_checks)
        return;
    for (int c = 2; c < m_columns; ++c)
        setDifference(row, c, compare(at(row, 1), at(row, c)));
}

void TvxGridModel::recheckAll()
{
    m_differenceCount = 0;
    if (!m_checks) {
        m_differences.clear();
        return;
    }
    m_differences = QList<quint8>(m_cells.size(), 0);
    for (int r = 0; r < m_rows; ++r)
        recheckRow(r);
}

void TvxGridModel::setDifference(int row, int column, Differences d)
{
    if (!m_checks)
        return;
    quint8 &slot = m_differences[qsizetype(row) * m_columns + column];
    const quint8 value = quint8(d.toInt());
    if (slot && !value)
        --m_differenceCount;
    else if (!slot && value)
        ++m_differenceCount;
    slot = value;
}
