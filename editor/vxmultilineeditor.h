#pragma once

#include "vexil_export.h"

#include <QtCore/QString>

class QWidget;

/// How ShowMultilineEditor() reads its value and returns its result.
enum TMemoReturnText {
    mrtCommaText, ///< the value is a comma-separated list, one item per line
    mrtText       ///< the value is the whole text
};

/// Edits @p value in a modal window of several lines titled for property
/// @p propName. Returns true when OK was pressed; @p result then holds the
/// new value.
VEXIL_EXPORT bool ShowMultilineEditor(const QString &value, const QString &propName, TMemoReturnText mode,
                                      QString &result, QWidget *parent = nullptr);
