// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTemporaryDir>

/**
 * An empty home directory for the life of the object. Make it before anything asks for the home
 * directory: as the first object of the test's file, outside any function.
 */
class TestHome
{
public:
    TestHome();
    ~TestHome();
    TestHome(const TestHome&) = delete;
    TestHome& operator=(const TestHome&) = delete;

    /** Absolute path, without a trailing slash. */
    [[nodiscard]] QString Path() const { return Directory.path(); }
    /** Absolute path of the file @p name in it. */
    [[nodiscard]] QString Path(const QString& name) const { return Directory.filePath(name); }

private:
    QTemporaryDir Directory;
    QByteArray FormerHome;
};
