#pragma once

#include "vexil_export.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QFont>

class QObject;

/// Reads and writes the values the translation engine deals in, on real
/// properties and on the item lists Qt keeps without a property.
namespace TvxPropAccess {

/// A string property's value; empty when @p object has no such property.
VEXIL_EXPORT QString readString(const QObject *object, const QString &property);
/// Sets a string property when the value differs; returns whether it was written.
VEXIL_EXPORT bool writeString(QObject *object, const QString &property, const QString &value);

/// A string property resolved once for many writes: the setter to call
/// when the object is one of the common widgets, else the meta-property.
/// Valid as long as the object lives.
struct StringTarget
{
    QObject *object = nullptr;
    QString property;
    int setter = 0;
};
VEXIL_EXPORT StringTarget stringTarget(QObject *object, const QString &property);
/// Writes @p value itself (shared, not copied) into a resolved target,
/// only where it differs: the common widgets' setters check that
/// themselves, the others are compared first. Returns false when the value
/// was found unchanged before the setter.
VEXIL_EXPORT bool writeString(const StringTarget &target, const QString &value);

/// The lines of a string-list property ("Items", "Lines" or a QStringList property).
VEXIL_EXPORT QStringList readLines(const QObject *object, const QString &property);
/// Changes a string list to @p lines line by line: existing lines are
/// overwritten, missing ones added and surplus ones removed from the end.
/// A combo box keeps its current index.
VEXIL_EXPORT void writeLines(QObject *object, const QString &property, const QStringList &lines);

VEXIL_EXPORT bool hasFont(const QObject *object);
VEXIL_EXPORT QFont readFont(const QObject *object);
VEXIL_EXPORT void writeFont(QObject *object, const QFont &font);

/// The character-set value stored on @p object (DEFAULT_CHARSET when none is).
VEXIL_EXPORT int readCharSet(const QObject *object);
/// Applies a font family and a character set in one write; either may be
/// left out (empty family, negative set).
VEXIL_EXPORT void applyFont(QObject *object, const QString &family, int charSet);

/// Number of items of a collection ("Columns", "Tabs", "Pages"); -1 when
/// @p object has no such collection.
VEXIL_EXPORT int collectionCount(const QObject *object, const QString &collection);
/// The string properties of one item of a collection.
VEXIL_EXPORT QStringList collectionItemProperties(const QString &collection);
VEXIL_EXPORT QString readItem(const QObject *object, const QString &collection, int index,
                              const QString &itemProperty);
/// Sets an item property when the value differs.
VEXIL_EXPORT void writeItem(QObject *object, const QString &collection, int index,
                            const QString &itemProperty, const QString &value);

} // namespace TvxPropAccess
