#pragma once

#include "platform/controls/splash_form.h"
#include "platform/message/message_control.h"
#include "shell/fakes.h"

#include <QSet>

namespace melovane::test {

/// A start-up window that writes down what is done with it.
class SplashLog : public SplashForm
{
public:
    explicit SplashLog(QStringList& calls)
        : m_calls(calls)
    {}

    void load(const SplashView& shown) override
    {
        view = shown;
        m_calls.append(QStringLiteral("splash"));
    }

    void bringToFront() override { m_calls.append(QStringLiteral("front")); }

    void showAsNormal() override { m_calls.append(QStringLiteral("normal")); }

    void unload() override { m_calls.append(QStringLiteral("unload")); }

    SplashView view;

private:
    QStringList& m_calls;
};

/// Knows which handles are alive.
class KnownHandles : public Messages
{
public:
    [[nodiscard]] std::unique_ptr<KSMessage> makeControl() override { return nullptr; }

    [[nodiscard]] bool IsMsgWindow(MessageHandle handle) const override
    {
        return alive.contains(handle);
    }

    QSet<MessageHandle> alive;
};

} // namespace melovane::test
