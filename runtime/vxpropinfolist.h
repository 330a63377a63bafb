#pragma once

#include "vexil_export.h"

#include <QtCore/QList>
#include <QtCore/QString>

class QObject;

/// One translatable-looking property of an object: a designable, readable
/// and writable Qt property, or one of the item lists Qt keeps without a
/// property (combo and list items, text edit lines, header columns, tabs,
/// tool box pages).
struct VEXIL_EXPORT TvxPropInfo
{
    enum Kind { String = 0x1, StringList = 0x2, Font = 0x4, Collection = 0x8, Other = 0x10 };

    QString name;
    Kind kind = Other;
    /// The class word of an object-valued property: "TStrings", "TFont" or "TCollection".
    QString className;
    /// The Qt property index, or -1 for the item lists Qt has no property for.
    int metaIndex = -1;

    bool operator==(const TvxPropInfo &other) const
    {
        return name == other.name && kind == other.kind && metaIndex == other.metaIndex;
    }
};

/// The properties of one object filtered by kind. The per-class part is
/// computed once per class and shared, so building a list is cheap.
class VEXIL_EXPORT TvxPropInfoList
{
public:
    static constexpr int AllKinds = TvxPropInfo::String | TvxPropInfo::StringList
        | TvxPropInfo::Font | TvxPropInfo::Collection | TvxPropInfo::Other;

    explicit TvxPropInfoList(const QObject *object, int kinds = AllKinds);

    int count() const { return m_items.size(); }
    const TvxPropInfo &Get(int i) const { return m_items.at(i); }
    /// The record named @p name (ignoring case), or nullptr.
    const TvxPropInfo *Find(const QString &name) const;
    bool Contains(const TvxPropInfo &info) const;
    void Delete(int i);
    /// Keeps only the records that @p other contains too.
    void Intersect(const TvxPropInfoList &other);
    const QList<TvxPropInfo> &items() const { return m_items; }

    /// The property of @p object named @p name (ignoring case), or nullptr.
    /// Constant time: it uses the shared per-class index.
    static const TvxPropInfo *findProperty(const QObject *object, const QString &name);

    /// Whether @p object has item lists ("Columns", "Tabs", "Pages").
    static bool hasCollections(const QObject *object);

    /// The property that carries an object's caption: the first of "text",
    /// "title" and "windowTitle" it has (the window title only for windows,
    /// dock widgets and tool bars). Empty when there is none.
    static QString captionProperty(const QObject *object);
    /// The string properties of @p object that fall to no other category.
    static QList<TvxPropInfo> otherStringProperties(const QObject *object);

private:
    QList<TvxPropInfo> m_items;
};
