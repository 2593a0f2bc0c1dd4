#pragma once

#include <QObject>

#include <functional>
#include <memory>

/// The test classes of one program by the name of their file, so that one program serves a whole
/// folder and CTest still runs each class by itself.
namespace TestRegistry {
using Factory = std::function<std::unique_ptr<QObject>()>;

/// Called before `main` by ZK_REGISTER_TEST.
bool Add(const char* name, Factory factory);
} // namespace TestRegistry

/// Registers the test class under its file's name: `ZK_REGISTER_TEST(tst_filljob, TestFillJob)`.
#define ZK_REGISTER_TEST(name, Class)                                                                        \
    static const bool s_registered_##name =                                                                  \
        TestRegistry::Add(#name, [] { return std::unique_ptr<QObject>(std::make_unique<Class>()); });
