#pragma once

#include <QtCore/qglobal.h>

#if defined(VEXIL_DESIGNER_TOOLS_BUILD)
#  define VEXIL_DESIGNER_EXPORT Q_DECL_EXPORT
#else
#  define VEXIL_DESIGNER_EXPORT Q_DECL_IMPORT
#endif
