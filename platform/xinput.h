// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QPoint>
#include <QtCore/QtGlobal>

#include <memory>
#include <optional>

namespace dravelin {

/// Keyboard and pointer as an X server has them.
struct XInputState
{
    quint64 modifierFlags = 0; ///< Event::ModifierFlag
    quint64 buttons = 0;       ///< bit 0 left, bit 1 right, bit 2 middle
    QPoint pointer;            ///< pixels, y downwards
    int rootHeight = 0;        ///< of the screen that the pointer is on
};

/// A connection of its own to the X server of `DISPLAY`, opened when it is first needed, and once more when it broke.
class XInput
{
public:
    XInput();
    ~XInput();
    Q_DISABLE_COPY_MOVE(XInput)

    /// Absent without a server.
    [[nodiscard]] std::optional<XInputState> state();

    /// The server's time in milliseconds; absent without a server.
    [[nodiscard]] std::optional<quint32> time();

private:
    class Connection;

    template <class Question>
    auto ask(Question question);

    std::unique_ptr<Connection> m_connection;
};

} // namespace dravelin
