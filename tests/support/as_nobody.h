#pragma once

#include <QByteArray>

#include <gtest/gtest.h>
#include <unistd.h>

namespace melovane::test {

/// Lets a test meet the mode bits of files, which count nothing for the administrator.
class AsNobody
{
public:
    AsNobody()
    {
        if (::geteuid() == 0) {
            EXPECT_EQ(::seteuid(kNobody), 0);
        }
    }

    ~AsNobody() { EXPECT_EQ(::seteuid(::getuid()), 0); }

    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

    /// Makes a file or folder belong to whom the test then is.
    static bool give(const QByteArray& path)
    {
        return ::geteuid() != 0 || ::chown(path.constData(), kNobody, gid_t(-1)) == 0;
    }

private:
    static constexpr uid_t kNobody = 65534;
};

} // namespace melovane::test
