// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QWidget>

class QLabel;

/// A photo in the list: its thumbnail, its name, and how large it is.
class PhotoCell : public QWidget
{
    Q_OBJECT

public:
    PhotoCell();
    ~PhotoCell() override;

    void showPhoto(const QString &path);
    /// One of so many that they are not photos.
    void showNumber(qint64 number);

    /// How many there are in the whole application.
    [[nodiscard]] static int count() noexcept;

private:
    void show(const QPixmap &thumbnail, const QString &name, const QString &details);

    QLabel *m_thumbnail;
    QLabel *m_name;
    QLabel *m_details;
};
