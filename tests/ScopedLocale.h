#pragma once
// Switches the process locale for one test and restores it when the test leaves, also after a failed
// assertion, so a comma locale never leaks into the tests that run after it in the same process.

#include <clocale>
#include <string>

class ScopedLocale {
public:
    explicit ScopedLocale(const char* name) : m_previous(std::setlocale(LC_ALL, nullptr))
    {
        m_active = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~ScopedLocale() { std::setlocale(LC_ALL, m_previous.c_str()); }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;

    // False when the machine has no such locale; the test should skip then.
    bool IsActive() const { return m_active; }

private:
    std::string m_previous;
    bool m_active = false;
};
