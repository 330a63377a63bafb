#include "vxdictionarycommands.h"

#include "vxdictionaryclient.h"
#include "vxgridmodel.h"

#include <QtCore/QHash>

#include <deque>

namespace {

// Whether the dictionary knows each language, asked once per command: a
// command does not add languages while it looks translations up.
class KnownLanguages
{
public:
    explicit KnownLanguages(TvxDictionaryClient &dictionary) : m_dictionary(dictionary) {}
    bool operator()(const QString &language)
    {
        auto it = m_known.constFind(language);
        if (it == m_known.cend())
            it = m_known.insert(language, m_dictionary.IndexOfLang(language) >= 0);
        return *it;
    }

private:
    TvxDictionaryClient &m_dictionary;
    QHash<QString, bool> m_known;
};

void ensureLanguage(TvxDictionaryClient &dictionary, const QString &language)
{
    if (dictionary.IndexOfLang(language) < 0)
        dictionary.AddLanguage(language);
}

// One pair of neighbouring languages of one row. A pair with an empty text
// carries no translation and is not sent.
void addPair(const TvxGridModel &grid, int row, int column, TvxDictionaryClient &dictionary)
{
    const QString first = grid.header(column);
    const QString second = grid.header(column + 1);
    if (first.isEmpty())
        return;
    const QString text1 = grid.cell(row, column);
    const QString text2 = grid.cell(row, column + 1);
    if (text1.isEmpty() || text2.isEmpty())
        return;
    ensureLanguage(dictionary, first);
    ensureLanguage(dictionary, second);
    dictionary.AddTranslation(first, second, text1, text2);
}

} // namespace

namespace TvxDictionaryCommands {

bool hasUnnamedLanguage(const QStringList &headers)
{
    for (const QString &header : headers) {
        if (header.toUpper().contains(QLatin1String("LANGUAGE N")))
            return true;
    }
    return false;
}

void addRow(const TvxGridModel &grid, int row, TvxDictionaryClient &dictionary)
{
    if (row < 0 || row >= grid.rowCount())
        return;
    for (int c = 1; c + 1 < grid.columnCount(); ++c)
        addPair(grid, row, c, dictionary);
}

void addAll(const TvxGridModel &grid, TvxDictionaryClient &dictionary)
{
    for (int c = 1; c + 1 < grid.columnCount(); ++c) {
        for (int r = 0; r < grid.rowCount(); ++r)
            addPair(grid, r, c, dictionary);
    }
}

bool find(TvxGridModel &grid, int row, int column, TvxDictionaryClient &dictionary)
{
    if (row < 0 || row >= grid.rowCount() || column < 1 || column >= grid.columnCount())
        return false;
    KnownLanguages knows(dictionary);
    const QString target = grid.header(column);
    for (int c = 1; c < grid.columnCount(); ++c) {
        const QString source = grid.header(c);
        const QString text = grid.cell(row, c);
        if (c == column || source.isEmpty() || text.isEmpty() || !knows(source))
            continue;
        const QString answer = dictionary.GetTranslation(source, target, text);
        if (!answer.isEmpty()) {
            grid.setCell(row, column, answer);
            return true;
        }
    }
    return false;
}

int autoTranslate(TvxGridModel &grid, TvxDictionaryClient &dictionary)
{
    // Rows are settled one after the other, in order, as the commands have
    // always done; the look-up of each row's first source text is sent ahead
    // for the rows coming next, so that the round trips overlap. Look-ups
    // change nothing, and only the target column is written, which no
    // look-up of the same column reads: an error stops the command exactly
    // where waiting for each answer in turn would have stopped it.
    constexpr int ahead = 256;
    KnownLanguages knows(dictionary);
    int written = 0;
    const int rows = grid.rowCount();
    for (int t = 1; t < grid.columnCount(); ++t) {
        const QString target = grid.header(t);
        if (target.isEmpty())
            continue;
        const auto sourceFrom = [&](int r, int from) {
            for (int c = from; c < grid.columnCount(); ++c) {
                if (c != t && !grid.header(c).isEmpty() && !grid.cell(r, c).isEmpty() && knows(grid.header(c)))
                    return c;
            }
            return -1;
        };
        struct Sent
        {
            int source;
            QDBusPendingCall call;
        };
        std::deque<Sent> sent;
        int next = 0;
        for (int r = 0; r < rows; ++r) {
            for (; next < rows && next <= r + ahead; ++next) {
                const int c = sourceFrom(next, 1);
                sent.push_back({c, c < 0 ? QDBusPendingCall::fromError(QDBusError())
                                         : dictionary.GetTranslationAsync(grid.header(c), target, grid.cell(next, c))});
            }
            Sent first = std::move(sent.front());
            sent.pop_front();
            int c = first.source;
            QString answer = c < 0 ? QString() : TvxDictionaryClient::translationOf(first.call);
            while (answer.isEmpty() && c >= 0) {
                c = sourceFrom(r, c + 1);
                if (c >= 0)
                    answer = dictionary.GetTranslation(grid.header(c), target, grid.cell(r, c));
            }
            if (!answer.isEmpty() && grid.setCell(r, t, answer))
                ++written;
        }
    }
    return written;
}

} // namespace TvxDictionaryCommands
