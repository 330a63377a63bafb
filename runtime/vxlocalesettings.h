#pragma once

#include "vexil_export.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>

class QLocale;

/// The process-wide locale settings that translations may switch: the
/// currency string, the separators and the date and time formats, in the
/// classic format-string notation (d/m/yyyy, hh:nn:ss, ampm ...).
///
/// Read from the system locale on first use; any change emits changed().
///
/// The text forms of dates, times and numbers that the INI store reads and
/// writes follow these settings, whatever they are at the time of the call.
/// Format notation: d dd (day), ddd dddd (day name), ddddd dddddd (short and
/// long date), m mm (month; minutes right after an hour), mmm mmmm (month
/// name), yy yyyy (year), h hh (hour), n nn (minutes), s ss (seconds), z zzz
/// (milliseconds), t tt (short and long time), c (short date and long
/// time), ampm am/pm a/p (12-hour clock), "/" and ":" (the date and time
/// separators), text in double or single quotes as it is. Letters are
/// matched without regard to case.
class VEXIL_EXPORT TvxLocaleSettings : public QObject
{
    Q_OBJECT
public:
    /// The settings, in the order of the locale table lines.
    enum Item {
        CurrencyString,
        ThousandSeparator,
        DecimalSeparator,
        DateSeparator,
        ShortDateFormat,
        LongDateFormat,
        TimeSeparator,
        TimeAMString,
        TimePMString,
        ShortTimeFormat,
        LongTimeFormat,
        ItemCount
    };
    Q_ENUM(Item)

    static TvxLocaleSettings *instance();

    /// The value of @p item; separators are one-character strings.
    QString value(Item item) const;
    /// Sets @p item; a separator takes the first character of @p value only.
    void setValue(Item item, const QString &value);
    /// Rereads every setting from the system locale.
    void resetFromSystem();
    /// Reads every setting from @p locale (changed() is emitted for each
    /// setting that changes).
    void resetFrom(const QLocale &locale);

    /// @p value in @p format (the notation above).
    QString formatDateTime(const QString &format, const QDateTime &value) const;

    // The text forms the INI store keeps. A date is written in the short
    // date format with the year always in full, a time in the long time
    // format, a date and time as both joined by a blank; a format that lacks
    // a field the value needs is replaced by a numeric one with the current
    // separators, so every value reads back as it was written (times to the
    // second). Readers take the numbers in the order the format gives them,
    // accept month names, the am/pm strings and the format's own words, and
    // read a two-digit year as the one within 50 years before or 49 after
    // the current year. Unreadable text gives an invalid value.
    QString dateToString(const QDate &date) const;
    QString timeToString(const QTime &time) const;
    QString dateTimeToString(const QDateTime &dateTime) const;
    QDate stringToDate(const QString &text) const;
    QTime stringToTime(const QString &text) const;
    QDateTime stringToDateTime(const QString &text) const;
    /// Up to 15 significant digits with the decimal separator and no
    /// grouping.
    QString floatToString(double value) const;
    /// Reads a number written with the decimal separator (or, failing that,
    /// with a point); grouping is refused. Sets @p ok.
    double stringToFloat(const QString &text, bool *ok) const;

    static bool isSeparator(Item item);

Q_SIGNALS:
    void changed(TvxLocaleSettings::Item item);

private:
    TvxLocaleSettings();
    QString m_values[ItemCount];
};
