#pragma once

#include <QApplication>

#include <array>
#include <cstdlib>
#include <memory>
#include <string>

namespace corvane::bench {
/// The application that windows and fonts need.
class Desktop {
public:
    Desktop()
    {
        setenv("QT_QPA_PLATFORM", "offscreen", 0); // NOLINT(concurrency-mt-unsafe): no other thread is there yet
        m_application = std::make_unique<QApplication>(m_argumentCount, m_arguments.data());
        QApplication::setQuitOnLastWindowClosed(false);
    }

private:
    std::string m_name = "windows_bench";
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    int m_argumentCount = 1;
    std::unique_ptr<QApplication> m_application;
};

} // namespace corvane::bench
