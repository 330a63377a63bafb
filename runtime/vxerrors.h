#pragma once

#include "vexil_export.h"

#include <QtCore/QString>

#include <stdexcept>

/// Base of the suite's exceptions; carries its message as a QString.
class VEXIL_EXPORT EVexilError : public std::runtime_error
{
public:
    explicit EVexilError(const QString &message);
    QString message() const { return m_message; }

private:
    QString m_message;
};

/// Raised for an invalid property value or an unknown language name.
class VEXIL_EXPORT ELanguageError : public EVexilError
{
public:
    using EVexilError::EVexilError;
};

/// A text that should have been a number was not.
class VEXIL_EXPORT EConvertError : public EVexilError
{
public:
    using EVexilError::EVexilError;
};

/// An index outside a list's bounds.
class VEXIL_EXPORT EListError : public EVexilError
{
public:
    using EVexilError::EVexilError;
};
