#include "vxlocalesettings.h"

#include <QtCore/QLocale>

#include <algorithm>

namespace {

// Turns a QLocale date/time pattern into the classic notation, in which
// minutes are "n" and the am/pm marker is "ampm".
QString classicFormat(const QString &qtFormat)
{
    QString out;
    out.reserve(qtFormat.size());
    bool quoted = false;
    for (int i = 0; i < qtFormat.size(); ++i) {
        const QChar c = qtFormat.at(i);
        if (c == QLatin1Char('\'')) {
            quoted = !quoted;
            out += QLatin1Char('"');
            continue;
        }
        if (quoted) {
            out += c;
            continue;
        }
        if (c == QLatin1Char('t')) {
            // A time zone: in this notation "t" would mean the short time.
            // The blank that set it apart goes with it.
            while (i + 1 < qtFormat.size() && qtFormat.at(i + 1) == QLatin1Char('t'))
                ++i;
            if (out.isEmpty() || out.back().isSpace()) {
                while (!out.isEmpty() && out.back().isSpace())
                    out.chop(1);
                if (out.isEmpty()) {
                    while (i + 1 < qtFormat.size() && qtFormat.at(i + 1).isSpace())
                        ++i;
                }
            }
            continue;
        } else if (c == QLatin1Char('m')) {
            out += QLatin1Char('n');
        } else if (c == QLatin1Char('M')) {
            out += QLatin1Char('m');
        } else if (c == QLatin1Char('a') || c == QLatin1Char('A')) {
            out += QLatin1String("ampm");
            if (i + 1 < qtFormat.size() && (qtFormat.at(i + 1) == QLatin1Char('p') || qtFormat.at(i + 1) == QLatin1Char('P')))
                ++i;
        } else {
            out += c;
        }
    }
    return out;
}

QChar firstSeparator(const QString &format, const QString &fieldChars)
{
    for (QChar c : format) {
        if (!fieldChars.contains(c) && !c.isSpace() && c != QLatin1Char('\''))
            return c;
    }
    return QChar();
}

} // namespace

TvxLocaleSettings::TvxLocaleSettings()
{
    resetFromSystem();
}

TvxLocaleSettings *TvxLocaleSettings::instance()
{
    static TvxLocaleSettings settings;
    return &settings;
}

bool TvxLocaleSettings::isSeparator(Item item)
{
    return item == ThousandSeparator || item == DecimalSeparator || item == DateSeparator
        || item == TimeSeparator;
}

QString TvxLocaleSettings::value(Item item) const
{
    return item >= 0 && item < ItemCount ? m_values[item] : QString();
}

void TvxLocaleSettings::setValue(Item item, const QString &value)
{
    if (item < 0 || item >= ItemCount)
        return;
    const QString v = isSeparator(item) ? value.left(1) : value;
    if (m_values[item] == v)
        return;
    m_values[item] = v;
    Q_EMIT changed(item);
}

void TvxLocaleSettings::resetFromSystem()
{
    resetFrom(QLocale::system());
}

void TvxLocaleSettings::resetFrom(const QLocale &l)
{
    QString values[ItemCount];
    const QString shortDate = l.dateFormat(QLocale::ShortFormat);
    const QString shortTime = l.timeFormat(QLocale::ShortFormat);
    values[CurrencyString] = l.currencySymbol();
    values[ThousandSeparator] = l.groupSeparator().left(1);
    values[DecimalSeparator] = l.decimalPoint().left(1);
    const QChar dateSeparator = firstSeparator(shortDate, QStringLiteral("dMyg"));
    values[DateSeparator] = dateSeparator.isNull() ? QString() : QString(dateSeparator);
    values[ShortDateFormat] = classicFormat(shortDate);
    values[LongDateFormat] = classicFormat(l.dateFormat(QLocale::LongFormat));
    const QChar timeSeparator = firstSeparator(shortTime, QStringLiteral("hHmszaAptT"));
    values[TimeSeparator] = timeSeparator.isNull() ? QString() : QString(timeSeparator);
    values[TimeAMString] = l.amText();
    values[TimePMString] = l.pmText();
    values[ShortTimeFormat] = classicFormat(shortTime);
    values[LongTimeFormat] = classicFormat(l.timeFormat(QLocale::LongFormat));
    for (int i = 0; i < ItemCount; ++i)
        setValue(Item(i), values[i]);
}

// --- Text forms of dates, times and numbers ----------------------------------

namespace {

enum class Tok {
    Literal,
    Day,       // count 1 or 2
    DayName,   // count 3 (short) or 4 (long)
    Month,     // count 1 or 2
    MonthName, // count 3 (short) or 4 (long)
    Year,      // count 2 or 4
    Hour,      // count 1 or 2
    Minute,    // count 1 or 2
    Second,    // count 1 or 2
    Msec,      // count 1 or 3
    AmPm,      // the settings' am/pm strings
    AmPmAs,    // "am/pm" or "a/p" in the case written: text holds "am"/"a"
};

struct Token
{
    Tok kind;
    int count = 0;
    QString text;
};

bool startsWithCi(const QString &s, int i, QLatin1String what)
{
    return QStringView(s).mid(i, what.size()).compare(what, Qt::CaseInsensitive) == 0;
}

// Splits a format into tokens. Short and long date and time (ddddd,
// dddddd, t, tt, c) expand to the tokens of those formats, one level deep.
void tokenize(const TvxLocaleSettings &settings, const QString &format, QList<Token> &out, int depth = 0)
{
    using S = TvxLocaleSettings;
    const auto literal = [&out](const QString &text) {
        if (!out.isEmpty() && out.last().kind == Tok::Literal)
            out.last().text += text;
        else
            out.append({Tok::Literal, 0, text});
    };
    const auto expand = [&](S::Item item) {
        if (depth == 0)
            tokenize(settings, settings.value(item), out, depth + 1);
    };
    bool afterHour = false;
    const int n = int(format.size());
    for (int i = 0; i < n;) {
        const QChar c = format.at(i);
        const QChar lower = c.toLower();
        int run = 1;
        while (i + run < n && format.at(i + run).toLower() == lower && lower.isLetter())
            ++run;
        if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            const int end = format.indexOf(c, i + 1);
            literal(format.mid(i + 1, (end < 0 ? n : end) - i - 1));
            i = end < 0 ? n : end + 1;
            continue;
        }
        if (lower == QLatin1Char('a')) {
            if (startsWithCi(format, i, QLatin1String("am/pm"))) {
                out.append({Tok::AmPmAs, 0, format.mid(i, 2)});
                i += 5;
            } else if (startsWithCi(format, i, QLatin1String("a/p"))) {
                out.append({Tok::AmPmAs, 0, format.mid(i, 1)});
                i += 3;
            } else if (startsWithCi(format, i, QLatin1String("ampm"))) {
                out.append({Tok::AmPm});
                i += 4;
            } else {
                literal(format.mid(i, 1));
                ++i;
            }
            continue;
        }
        i += run;
        switch (lower.unicode()) {
        case 'd':
            if (run <= 2)
                out.append({Tok::Day, run});
            else if (run <= 4)
                out.append({Tok::DayName, run});
            else
                expand(run == 5 ? S::ShortDateFormat : S::LongDateFormat);
            afterHour = false;
            break;
        case 'm':
            if (afterHour)
                out.append({Tok::Minute, qMin(run, 2)});
            else
                out.append({run <= 2 ? Tok::Month : Tok::MonthName, qMin(run, 4)});
            afterHour = false;
            break;
        case 'y':
            out.append({Tok::Year, run <= 2 ? 2 : 4});
            afterHour = false;
            break;
        case 'h':
            out.append({Tok::Hour, qMin(run, 2)});
            afterHour = true;
            break;
        case 'n':
            out.append({Tok::Minute, qMin(run, 2)});
            afterHour = false;
            break;
        case 's':
            out.append({Tok::Second, qMin(run, 2)});
            afterHour = false;
            break;
        case 'z':
            out.append({Tok::Msec, run >= 3 ? 3 : 1});
            afterHour = false;
            break;
        case 't':
            expand(run == 1 ? S::ShortTimeFormat : S::LongTimeFormat);
            afterHour = false;
            break;
        case 'c':
            if (run == 1) {
                expand(S::ShortDateFormat);
                literal(QStringLiteral(" "));
                expand(S::LongTimeFormat);
                afterHour = false;
                break;
            }
            literal(format.mid(i - run, run));
            break;
        case '/': // with no separator set, the fields still need one between them
            literal(settings.value(S::DateSeparator).isEmpty() ? QStringLiteral("/") : settings.value(S::DateSeparator));
            break;
        case ':':
            literal(settings.value(S::TimeSeparator).isEmpty() ? QStringLiteral(":") : settings.value(S::TimeSeparator));
            break;
        default:
            literal(format.mid(i - run, run));
            break;
        }
    }
}

bool has(const QList<Token> &tokens, Tok kind)
{
    return std::any_of(tokens.cbegin(), tokens.cend(), [kind](const Token &t) { return t.kind == kind; });
}

bool hasAmPm(const QList<Token> &tokens)
{
    return has(tokens, Tok::AmPm) || has(tokens, Tok::AmPmAs);
}

QString padded(int value, int width)
{
    return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0'));
}

QString amPmText(const TvxLocaleSettings &settings, bool pm)
{
    const QString text = settings.value(pm ? TvxLocaleSettings::TimePMString : TvxLocaleSettings::TimeAMString);
    return text.isEmpty() ? (pm ? QStringLiteral("pm") : QStringLiteral("am")) : text;
}

QString render(const TvxLocaleSettings &settings, const QList<Token> &tokens, const QDate &date, const QTime &time,
               bool fullYear)
{
    const QLocale locale = QLocale::system();
    const bool twelve = hasAmPm(tokens);
    QString out;
    for (const Token &t : tokens) {
        switch (t.kind) {
        case Tok::Literal:
            out += t.text;
            break;
        case Tok::Day:
            out += padded(date.day(), t.count);
            break;
        case Tok::DayName:
            out += locale.dayName(date.dayOfWeek(), t.count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
            break;
        case Tok::Month:
            out += padded(date.month(), t.count);
            break;
        case Tok::MonthName:
            out += locale.monthName(date.month(), t.count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
            break;
        case Tok::Year:
            out += t.count == 2 && !fullYear ? padded(date.year() % 100, 2) : padded(date.year(), 4);
            break;
        case Tok::Hour: {
            int h = time.hour();
            if (twelve)
                h = h % 12 == 0 ? 12 : h % 12;
            out += padded(h, t.count);
            break;
        }
        case Tok::Minute:
            out += padded(time.minute(), t.count);
            break;
        case Tok::Second:
            out += padded(time.second(), t.count);
            break;
        case Tok::Msec:
            out += padded(time.msec(), t.count);
            break;
        case Tok::AmPm:
            out += amPmText(settings, time.hour() >= 12);
            break;
        case Tok::AmPmAs: {
            // "am/pm" and "a/p" keep the case they were written in.
            const bool pm = time.hour() >= 12;
            QString text = t.text;
            if (pm) {
                text[0] = text.at(0).isUpper() ? QLatin1Char('P') : QLatin1Char('p');
            }
            out += text;
            break;
        }
        }
    }
    return out;
}

// The numbers and words of a text, in order; everything else separates them.
struct Part
{
    bool number;
    QString text;
    int consumed = 0; // digits of a number already read
};

QList<Part> splitText(const QString &text)
{
    QList<Part> parts;
    const int n = int(text.size());
    for (int i = 0; i < n;) {
        const QChar c = text.at(i);
        if (c.isDigit()) {
            const int start = i;
            while (i < n && text.at(i).isDigit())
                ++i;
            parts.append({true, text.mid(start, i - start)});
        } else if (c.isLetter()) {
            const int start = i;
            while (i < n && text.at(i).isLetter())
                ++i;
            parts.append({false, text.mid(start, i - start)});
        } else {
            ++i;
        }
    }
    return parts;
}

// Reads dates and times by the fields of a format.
class Reader
{
public:
    Reader(const TvxLocaleSettings &settings, const QList<Token> &tokens)
        : m_settings(settings)
        , m_tokens(tokens)
    {
        for (const Token &t : tokens) {
            if (t.kind == Tok::Literal)
                m_literals += t.text + QLatin1Char(' ');
        }
    }

    // Reads the date fields from m_parts at m_at.
    bool date(QDate &result)
    {
        int day = -1, month = -1, year = -1, yearDigits = 0;
        for (int i = 0; i < m_tokens.size(); ++i) {
            const Token &t = m_tokens.at(i);
            if (t.kind == Tok::MonthName) {
                month = monthOfWord();
                if (month < 0)
                    return false;
                continue;
            }
            if (t.kind != Tok::Day && t.kind != Tok::Month && t.kind != Tok::Year)
                continue;
            int value, digits;
            if (!nextNumber(width(i), value, digits))
                return false;
            if (t.kind == Tok::Day)
                day = value;
            else if (t.kind == Tok::Month)
                month = value;
            else {
                year = value;
                yearDigits = digits;
            }
        }
        if (day < 0 || month < 0 || year < 0)
            return false;
        if (yearDigits <= 2) {
            // The two-digit year within 50 years before or 49 after this one.
            const int first = QDate::currentDate().year() - 50;
            year += first / 100 * 100;
            if (year < first)
                year += 100;
        }
        result = QDate(year, month, day);
        return result.isValid();
    }

    // Reads the time fields; minutes, seconds and milliseconds may be missing.
    bool time(QTime &result)
    {
        int values[4] = {-1, 0, 0, 0};
        int field = 0;
        for (int i = 0; i < m_tokens.size(); ++i) {
            const Tok kind = m_tokens.at(i).kind;
            const int index = kind == Tok::Hour ? 0 : kind == Tok::Minute ? 1 : kind == Tok::Second ? 2
                            : kind == Tok::Msec ? 3 : -1;
            if (index < 0)
                continue;
            int value, digits;
            if (!nextNumber(width(i), value, digits)) {
                if (field == 0)
                    return false;
                break;
            }
            values[index] = value;
            ++field;
        }
        if (values[0] < 0)
            return false;
        int hour = values[0];
        if (m_pm == 1 || m_pm == 0) {
            if (hour < 1 || hour > 12)
                return false;
            hour = hour % 12 + (m_pm == 1 ? 12 : 0);
        }
        result = QTime(hour, values[1], values[2], values[3]);
        return result.isValid();
    }

    void start(const QString &text)
    {
        m_at = 0;
        m_pm = -1;
        // The am/pm strings may hold blanks or points ("a. m."): take them
        // out whole before the text is split.
        QString rest = text;
        if (hasAmPm(m_tokens)) {
            for (int pm = 1; pm >= 0 && m_pm < 0; --pm) {
                const QString marker = amPmText(m_settings, pm == 1);
                const int at = rest.indexOf(marker, 0, Qt::CaseInsensitive);
                if (at >= 0) {
                    rest.replace(at, marker.size(), QLatin1Char(' '));
                    m_pm = pm;
                }
            }
        }
        m_month = has(m_tokens, Tok::MonthName) ? takeMonthName(rest) : -1;
        m_parts = splitText(rest);
        m_used.fill(false, m_parts.size());
    }

    // Every number used, and every word one the format allows.
    bool finish()
    {
        for (int i = 0; i < m_parts.size(); ++i) {
            if (m_used.at(i))
                continue;
            const Part &p = m_parts.at(i);
            if (p.number)
                return false;
            if (hasAmPm(m_tokens) && amPmOfWord(p.text) >= 0)
                continue;
            if (!isAllowedWord(p.text))
                return false;
        }
        return true;
    }

    // Am/pm must be known before the hours are read.
    void findAmPm()
    {
        if (!hasAmPm(m_tokens) || m_pm >= 0)
            return;
        for (const Part &p : std::as_const(m_parts)) {
            if (!p.number && (m_pm = amPmOfWord(p.text)) >= 0)
                return;
        }
    }

    // Whether every number has been read.
    bool atEnd() const
    {
        for (int i = m_at; i < m_parts.size(); ++i) {
            if (m_parts.at(i).number)
                return false;
        }
        return true;
    }

private:
    static bool isNumberField(Tok kind)
    {
        return kind == Tok::Day || kind == Tok::Month || kind == Tok::Year || kind == Tok::Hour
            || kind == Tok::Minute || kind == Tok::Second || kind == Tok::Msec;
    }

    // How many digits field @p i takes: all of a number, unless the next
    // field follows with nothing between ("yyyymmdd"); then its width as
    // written (years are written in full).
    int width(int i) const
    {
        if (i + 1 >= m_tokens.size() || !isNumberField(m_tokens.at(i + 1).kind))
            return 0;
        const Token &t = m_tokens.at(i);
        return t.kind == Tok::Year ? 4 : t.count;
    }

    bool nextNumber(int width, int &value, int &digits)
    {
        while (m_at < m_parts.size() && !m_parts.at(m_at).number)
            ++m_at;
        if (m_at >= m_parts.size())
            return false;
        Part &p = m_parts[m_at];
        const int left = int(p.text.size()) - p.consumed;
        digits = width > 0 && left > width ? width : left;
        if (digits > 9)
            return false;
        value = 0;
        for (int k = 0; k < digits; ++k)
            value = value * 10 + p.text.at(p.consumed + k).digitValue();
        p.consumed += digits;
        if (p.consumed == p.text.size()) {
            m_used[m_at] = true;
            ++m_at;
        }
        return true;
    }

    int monthOfWord() const { return m_month; }

    // Finds the longest month name in @p text ("12月" rather than "2月",
    // "March" rather than "Mar") that does not start or end inside a word,
    // blanks it out and returns the month, or -1.
    static int takeMonthName(QString &text)
    {
        const QLocale locale = QLocale::system();
        int best = -1, bestAt = -1, bestLength = 0;
        for (int month = 1; month <= 12; ++month) {
            for (auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
                QString name = locale.monthName(month, format);
                if (name.endsWith(QLatin1Char('.')))
                    name.chop(1);
                if (name.size() <= bestLength)
                    continue;
                for (int at = int(text.indexOf(name, 0, Qt::CaseInsensitive)); at >= 0;
                     at = int(text.indexOf(name, at + 1, Qt::CaseInsensitive))) {
                    const int end = at + int(name.size());
                    const bool openStart = at == 0 || !name.front().isLetter() || !text.at(at - 1).isLetter();
                    const bool openEnd = end == text.size() || !name.back().isLetter() || !text.at(end).isLetter();
                    if (openStart && openEnd) {
                        best = month;
                        bestAt = at;
                        bestLength = int(name.size());
                        break;
                    }
                }
            }
        }
        if (best > 0)
            text.replace(bestAt, bestLength, QLatin1Char(' '));
        return best;
    }

    int amPmOfWord(const QString &word) const
    {
        for (int pm = 0; pm < 2; ++pm) {
            if (word.compare(QLatin1String(pm ? "pm" : "am"), Qt::CaseInsensitive) == 0
                || word.compare(QLatin1String(pm ? "p" : "a"), Qt::CaseInsensitive) == 0)
                return pm;
        }
        return -1;
    }

    bool isAllowedWord(const QString &word) const
    {
        if (m_literals.contains(word, Qt::CaseInsensitive))
            return true;
        if (has(m_tokens, Tok::DayName)) {
            const QLocale locale = QLocale::system();
            for (int day = 1; day <= 7; ++day) {
                for (auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
                    if (locale.dayName(day, format).contains(word, Qt::CaseInsensitive))
                        return true;
                }
            }
        }
        return false;
    }

    const TvxLocaleSettings &m_settings;
    QList<Token> m_tokens;
    QString m_literals;
    QList<Part> m_parts;
    QList<bool> m_used;
    int m_at = 0;
    int m_pm = -1;
    int m_month = -1;
};

bool hasDateFields(const QList<Token> &t)
{
    return has(t, Tok::Day) && (has(t, Tok::Month) || has(t, Tok::MonthName)) && has(t, Tok::Year);
}

bool hasTimeFields(const QList<Token> &t)
{
    return has(t, Tok::Hour) && has(t, Tok::Minute) && has(t, Tok::Second);
}

// The formats values are stored in: the settings' own when they hold every
// field a value needs, else numeric ones with the current separators.
QList<Token> storedDateFormat(const TvxLocaleSettings &settings)
{
    QList<Token> tokens;
    tokenize(settings, settings.value(TvxLocaleSettings::ShortDateFormat), tokens);
    if (!hasDateFields(tokens)) {
        tokens.clear();
        tokenize(settings, QStringLiteral("yyyy/mm/dd"), tokens);
    }
    return tokens;
}

QList<Token> storedTimeFormat(const TvxLocaleSettings &settings)
{
    QList<Token> tokens;
    tokenize(settings, settings.value(TvxLocaleSettings::LongTimeFormat), tokens);
    if (!hasTimeFields(tokens)) {
        tokens.clear();
        tokenize(settings, QStringLiteral("hh:nn:ss"), tokens);
    }
    return tokens;
}

} // namespace

QString TvxLocaleSettings::formatDateTime(const QString &format, const QDateTime &value) const
{
    QList<Token> tokens;
    tokenize(*this, format, tokens);
    return render(*this, tokens, value.date(), value.time(), false);
}

QString TvxLocaleSettings::dateToString(const QDate &date) const
{
    return date.isValid() ? render(*this, storedDateFormat(*this), date, QTime(0, 0), true) : QString();
}

QString TvxLocaleSettings::timeToString(const QTime &time) const
{
    return time.isValid() ? render(*this, storedTimeFormat(*this), QDate(), time, true) : QString();
}

QString TvxLocaleSettings::dateTimeToString(const QDateTime &dateTime) const
{
    if (!dateTime.isValid())
        return QString();
    return dateToString(dateTime.date()) + QLatin1Char(' ') + timeToString(dateTime.time());
}

QDate TvxLocaleSettings::stringToDate(const QString &text) const
{
    Reader reader(*this, storedDateFormat(*this));
    reader.start(text);
    QDate date;
    if (!reader.date(date) || !reader.finish())
        return QDate();
    return date;
}

QTime TvxLocaleSettings::stringToTime(const QString &text) const
{
    Reader reader(*this, storedTimeFormat(*this));
    reader.start(text);
    reader.findAmPm();
    QTime time;
    if (!reader.time(time) || !reader.finish())
        return QTime();
    return time;
}

QDateTime TvxLocaleSettings::stringToDateTime(const QString &text) const
{
    // The date's fields come first, the time's (if any) after them.
    QList<Token> tokens = storedDateFormat(*this);
    const QList<Token> time = storedTimeFormat(*this);
    tokens.append({Tok::Literal, 0, QStringLiteral(" ")});
    tokens.append(time);
    Reader reader(*this, tokens);
    reader.start(text);
    reader.findAmPm();
    QDate d;
    if (!reader.date(d))
        return QDateTime();
    QTime t(0, 0); // a date alone is midnight
    if (!reader.atEnd() && !reader.time(t))
        return QDateTime();
    if (!reader.finish())
        return QDateTime();
    return QDateTime(d, t);
}

QString TvxLocaleSettings::floatToString(double value) const
{
    QString text = QString::number(value, 'g', 15);
    const QString separator = m_values[DecimalSeparator];
    if (!separator.isEmpty() && separator != QLatin1String("."))
        text.replace(QLatin1Char('.'), separator.at(0));
    return text;
}

double TvxLocaleSettings::stringToFloat(const QString &text, bool *ok) const
{
    QLocale c = QLocale::c();
    c.setNumberOptions(QLocale::RejectGroupSeparator);
    QString s = text.trimmed();
    const QString separator = m_values[DecimalSeparator];
    if (!separator.isEmpty() && separator != QLatin1String(".")) {
        if (s.contains(QLatin1Char('.')) && s.contains(separator.at(0))) {
            *ok = false;
            return 0;
        }
        s.replace(separator.at(0), QLatin1Char('.'));
    }
    return c.toDouble(s, ok);
}
