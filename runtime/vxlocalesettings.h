#pragma once

#include "vexil_export.h"

#include <QtCore/QObject>
#include <QtCore/QString>

/// The process-wide locale settings that translations may switch: the
/// currency string, the separators and the date and time formats, in the
/// classic format-string notation (d/m/yyyy, hh:nn:ss, ampm ...).
///
/// Read from the system locale on first use; any change emits changed().
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

    static bool isSeparator(Item item);

Q_SIGNALS:
    void changed(TvxLocaleSettings::Item item);

private:
    TvxLocaleSettings();
    QString m_values[ItemCount];
};
