#pragma once

#include "vexil_export.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

/// The components of an owner (a form or any other QObject), as the
/// translation engine sees them: the owner's descendants that have an
/// object name, depth first in child order. It does not descend into a
/// descendant window (pop-up menus excepted) nor into the inside of Qt's
/// own controls (a tab bar, a line edit, a view ...), whose children Qt
/// makes itself. A descendant that holds a translation component of its
/// own (an embedded form) is left out with everything in it. Qt's internal
/// children (names starting with "qt_" or "_q_", a main window's
/// "_layout") and the suite's non-visual components are passed through but
/// not listed.
///
/// Names are indexed, so find() costs the same for any form size.
class VEXIL_EXPORT TvxComponentList
{
public:
    explicit TvxComponentList(QObject *owner);

    QObject *owner() const { return m_owner; }
    int count() const { return m_components.size(); }
    QObject *at(int i) const { return m_components.at(i); }
    const QList<QObject *> &components() const { return m_components; }

    /// The first component named @p name, or nullptr.
    QObject *find(const QString &name) const;
    /// find(), falling back to the owner when @p name is the owner's class name.
    QObject *findOrOwner(const QString &name) const;
    /// Whether @p name names a component or the owner's class.
    bool knows(const QString &name) const;

    QString ownerClassName() const { return m_ownerClass; }

    /// A digest of the components' identities, classes, names and collection
    /// sizes: equal digests mean nothing a table depends on has changed.
    quint64 fingerprint() const { return m_fingerprint; }

    /// The owner and every object whose children the walk looked at: where
    /// an object can be added, removed or moved that would change the list.
    const QList<QObject *> &entered() const { return m_entered; }
    /// Whether a new walk would give the same list, provided no object has
    /// been added, removed or moved under one of entered() since (which
    /// TvxFormWatch tells): no name, separator or collection size changed.
    bool stillCurrent() const;

private:
    void collect(QObject *parent);

    // Every child the walk looked at, with what decided its place in the list.
    struct Seen
    {
        QObject *object;
        QString name;
        quint64 state; // separator flags of an action, collection sizes
        bool action;
        bool collections;
    };
    QList<Seen> m_seen;
    QList<QObject *> m_entered;

    QObject *m_owner;
    QString m_ownerClass;
    QList<QObject *> m_components;
    mutable QHash<QString, QObject *> m_byName; // built on the first find()
    quint64 m_fingerprint = 0;
};
