#pragma once
// Registry of the test classes of one test executable. Each test file ends with
// QUORVEL_TEST(ClassName); the shared main in TestMain.cpp runs them all, in
// the order of registration, and fails when any of them fails.
//
// Command-line arguments after the executable are handed to every class, so
// `test_store -functions` or `test_store shouldDoX` work as with a plain
// QTEST_MAIN; `-class NAME` runs one class only.
#include <QObject>
#include <functional>
#include <vector>

namespace testlib {

struct Registration
{
    const char *name;
    std::function<QObject *()> make;
};

std::vector<Registration> &registry();

struct Registrar
{
    Registrar(const char *name, std::function<QObject *()> make);
};

}  // namespace testlib

#define QUORVEL_TEST(Class) static testlib::Registrar quorvelTestRegistrar_##Class(#Class, [] { return new Class; });
