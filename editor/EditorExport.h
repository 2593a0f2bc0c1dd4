#pragma once

#include <QtGlobal>

/// Marks the few insides of `libzenkari` that its `main` and the tests of the whole program may call.
#if defined(ZK_HOST_BUILD)
#define ZK_EDITOR_EXPORT Q_DECL_EXPORT
#else
#define ZK_EDITOR_EXPORT Q_DECL_IMPORT
#endif
