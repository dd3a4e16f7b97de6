// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QSet>
#include <QtWidgets/QWidget>

/// A drawn keyboard. Keys that its events report light up, and modifiers that are held light up in another colour, whether
/// or not an event told so.
class KeyboardView : public QWidget
{
    Q_OBJECT

public:
    KeyboardView();

    [[nodiscard]] QSize sizeHint() const override { return {690, 276}; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {480, 192}; }

    /// \param flags the modifiers that are held now
    void setModifierFlags(quint64 flags);
    /// The scan codes of the keys that are down.
    [[nodiscard]] QSet<quint32> heldKeys() const { return m_held; }

protected:
    bool event(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QSet<quint32> m_held;
    quint64 m_flags = 0;
};
