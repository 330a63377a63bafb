#include "vxlocalesettings.h"

#include <QtCore/QLocale>

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
            continue; // a time zone; in this notation "t" would mean the short time
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
    const QLocale l = QLocale::system();
    const QString shortDate = l.dateFormat(QLocale::ShortFormat);
    const QString shortTime = l.timeFormat(QLocale::ShortFormat);
    m_values[CurrencyString] = l.currencySymbol();
    m_values[ThousandSeparator] = l.groupSeparator().left(1);
    m_values[DecimalSeparator] = l.decimalPoint().left(1);
    const QChar dateSeparator = firstSeparator(shortDate, QStringLiteral("dMyg"));
    m_values[DateSeparator] = dateSeparator.isNull() ? QString() : QString(dateSeparator);
    m_values[ShortDateFormat] = classicFormat(shortDate);
    m_values[LongDateFormat] = classicFormat(l.dateFormat(QLocale::LongFormat));
    const QChar timeSeparator = firstSeparator(shortTime, QStringLiteral("hHmszaAptT"));
    m_values[TimeSeparator] = timeSeparator.isNull() ? QString() : QString(timeSeparator);
    m_values[TimeAMString] = l.amText();
    m_values[TimePMString] = l.pmText();
    m_values[ShortTimeFormat] = classicFormat(shortTime);
    m_values[LongTimeFormat] = classicFormat(l.timeFormat(QLocale::LongFormat));
}
