// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

class QPainter;

/// All screens, what panels leave of them, the windows of all applications and the pointer, to scale.
class DesktopView : public QWidget
{
    Q_OBJECT

public:
    /// With y downwards.
    struct Screen
    {
        QString name;
        QRectF frame, visibleFrame;
        bool hasPointer = false;
        bool isFullScreen = false;

        friend bool operator==(const Screen &, const Screen &) = default;
    };
    struct Window
    {
        QString title;
        QRectF bounds;

        friend bool operator==(const Window &, const Window &) = default;
    };
    struct Scene
    {
        QList<Screen> screens;
        QList<Window> windows; ///< those in front first
        QPointF pointer;

        friend bool operator==(const Scene &, const Scene &) = default;
    };

    DesktopView();

    /// Draws anew when something changed.
    void setScene(const Scene &scene);
    [[nodiscard]] const Scene &scene() const { return m_scene; }
    [[nodiscard]] QSize sizeHint() const override { return {700, 340}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QTransform scale() const;

    Scene m_scene;
};
