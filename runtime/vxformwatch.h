#pragma once

#include "vexil_export.h"

#include <QtCore/QObject>

#include <memory>

class TvxComponentList;

/// Keeps the components of an owner between language switches, so that a
/// switch of an unchanged form does not walk the form again.
///
/// It watches, through event filters, every object whose children the
/// last walk looked at: an object added, removed or moved there, or a
/// translation component created or destroyed anywhere, means a new walk.
/// A rename, an action turned into a separator or a collection that grew
/// is found by checking the objects walked, which costs far less than the
/// walk itself.
class VEXIL_EXPORT TvxFormWatch : public QObject
{
    Q_OBJECT
public:
    explicit TvxFormWatch(QObject *parent = nullptr);
    ~TvxFormWatch() override;

    /// The components of @p owner as a walk now would find them. The list
    /// stays valid while the caller holds it, also when a later call walks
    /// again.
    std::shared_ptr<const TvxComponentList> components(QObject *owner);

    /// Counts registrations and removals of translation components; a
    /// change means the walk's borders may have moved.
    static quint64 &componentsGeneration();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::shared_ptr<const TvxComponentList> m_list;
    quint64 m_generation = 0;
    bool m_changed = true;
};
