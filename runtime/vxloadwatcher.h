#pragma once

#include "vexil_export.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <functional>

/// Tells a component built inside a form when the form has finished loading.
///
/// A component created while its owner window is not yet visible counts as
/// loading until whichever comes first: the owner is about to be shown, the
/// event loop runs for the first time, or finish() is called. The callback
/// runs exactly once. A component created under a visible owner, or whose
/// owner is not a window, is not loading at all and the callback never runs.
class VEXIL_EXPORT TvxLoadWatcher : public QObject
{
    Q_OBJECT
public:
    TvxLoadWatcher(QObject *owner, std::function<void()> onLoaded, QObject *parent);

    bool isLoading() const { return m_loading; }
    /// Ends loading now if it has not ended yet.
    void finish();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void finishFromEvent();

    QPointer<QObject> m_owner;
    std::function<void()> m_onLoaded;
    bool m_loading = false;
};
