// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QWidget>

#include <memory>

class QLabel;

/// A photo in the list: its thumbnail, its name, and how large it is.
class PhotoCell : public QWidget
{
    Q_OBJECT

public:
    PhotoCell();
    ~PhotoCell() override;

    /// The thumbnail comes later when it has to be read from the file first.
    void showPhoto(const QString &path);
    /// One of so many that they are not photos.
    void showNumber(qint64 number);

    /// How many there are in the whole application.
    [[nodiscard]] static int count() noexcept;
    /// How many thumbnails are still to come.
    [[nodiscard]] static int awaited() noexcept;

private:
    void show(const QPixmap &thumbnail, const QString &name, const QString &details);
    void readThumbnail(const QString &path);
    void takeThumbnail(const QString &path, const QImage &image);

    QLabel *m_thumbnail;
    QLabel *m_name;
    QLabel *m_details;
    std::shared_ptr<int> m_reading; ///< nobody wants its thumbnail any more when it is gone
};
