// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/frame.h>

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <optional>

namespace dravelin {

/// A view whose vertical axis runs downwards, as that of every widget does: a plain container.
class DRAVELIN_EXPORT FlippedView : public QWidget
{
    Q_OBJECT

public:
    explicit FlippedView(QWidget *parent = nullptr);
    /// \param frame see setFrame()
    /// \operation{initWithFrame:}
    explicit FlippedView(const QRectF &frame, QWidget *parent = nullptr);

    /// \return true: y is 0 at the top edge
    /// \operation{isFlipped}
    [[nodiscard]] virtual bool isFlipped() const;
};

/// Lays out its child widgets in a column, the first one on top, each at the left, in the middle or at the right. The
/// view fits its own size to the children, with a fixed gap between them, or keeps it and spreads the children over it.
///
///     auto view = dravelin::loadInterfaceFile(":/panel.ui");      // its stack views come arranged
///     auto *column = view->findChild<dravelin::VerticalStackView *>("column");
///     column->setAlignment(1);
///     column->arrangeViews();
///
/// The children are all child widgets that are not windows, hidden ones too, in the order of QObject::children(), which
/// raise() and lower() change. They keep their sizes. Frames are exact, see frame(); running values are in single
/// precision. A subclass may override the steps of the layout.
///
/// Only arrangeViews() lays out, on the application's call and when loadInterfaceFile() has read a file with such a
/// view. A view of a plain QUiLoader that finds the Qt Designer plugin is arranged on the next pass of the event loop;
/// call arrangeViews() yourself for a view that is made in code, and after the `setupUi()` that uic generates. A
/// QUiLoader that finds no plugin makes a plain QWidget instead.
class DRAVELIN_EXPORT VerticalStackView : public QWidget
{
    Q_OBJECT
    // Neither Qt Designer nor QUiLoader handles properties of type float.
    Q_PROPERTY(double itemSpacing READ itemSpacing WRITE setItemSpacing NOTIFY itemSpacingChanged)
    Q_PROPERTY(bool sizeToFit READ sizeToFit WRITE setSizeToFit NOTIFY sizeToFitChanged)
    Q_PROPERTY(int alignment READ alignment WRITE setAlignment NOTIFY alignmentChanged)

public:
    /// Sets the defaults.
    explicit VerticalStackView(QWidget *parent = nullptr);

    /// The gap between consecutive children in pixels when sizeToFit is on, 8 by default. May be negative.
    /// As a property it is a double, which is rounded to single precision.
    /// \operation{itemSpacing}
    [[nodiscard]] float itemSpacing() const noexcept { return m_itemSpacing; }
    /// \operation{setItemSpacing:}
    void setItemSpacing(float itemSpacing);
    /// Whether the view resizes itself to its content, with itemSpacing as the gap; otherwise it keeps its size and computes
    /// the gap. On by default.
    /// \operation{sizeToFit}
    [[nodiscard]] bool sizeToFit() const noexcept { return m_sizeToFit; }
    /// \operation{setSizeToFit:}
    void setSizeToFit(bool sizeToFit);
    /// 0, the default, places the children at the left, 1 in the middle, 2 at the right. Every other value acts as 0.
    /// \operation{alignment}
    [[nodiscard]] int alignment() const noexcept { return m_alignment; }
    /// \operation{setAlignment:}
    void setAlignment(int alignment);

    /// The space that the content takes while sizeToFit is on, for a layout or a scroll area around the view.
    /// \cost one pass over the children
    [[nodiscard]] QSize sizeHint() const override;
    /// While sizeToFit is on, as sizeHint().
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// Calls arrangeViews(). For whoever reads interface files: setDefaults(), then the properties of the file, then this.
    /// \operation{initWithCoder:}
    void interfaceFileLoaded() { arrangeViews(); }

    /// \return true: y is 0 at the top edge, and the first child is there
    /// \operation{isFlipped}
    [[nodiscard]] virtual bool isFlipped() const;

    /// Sets the three properties to their defaults.
    /// \operation{setDefaults}
    virtual void setDefaults();

    /// \name Steps of the layout
    /// arrangeViews() takes them; they can also be taken alone.
    /// @{

    /// While sizeToFit is on, gives the view its place with findWidestViewWidth() and calculateContentHeight() as its
    /// size.
    /// \operation{checkSizeToFit}
    virtual void checkSizeToFit();
    /// \return while sizeToFit is on, the sum of the children's heights and the gaps between them, which without
    /// children is minus one gap; otherwise the height of the view
    /// \operation{calculateContentHeight}
    [[nodiscard]] virtual float calculateContentHeight() const;
    /// \return 0 without children
    /// \operation{findWidestViewWidth}
    [[nodiscard]] virtual float findWidestViewWidth() const;
    /// The gap that spreads the children over the view: what they leave of its height, shared by as many gaps as there are
    /// children, so that one gap stays free below the last. Negative when they are higher than the view.
    /// \return 0 without children
    /// \operation{calculateItemSpacing}
    [[nodiscard]] virtual float calculateItemSpacing() const;
    /// Places a child at x = 0 and y = origin, and moves the origin on by its height and the gap.
    /// \param index of the child; one that is out of range does nothing but a log line
    /// \cost one pass over the children, none within arrangeViews()
    /// \operation{moveViewVertically:origin:itemSpacing:}
    virtual void moveViewVertically(qsizetype index, float &origin, float itemSpacing);
    /// Places a child as alignment says, in the view's width. It may stand out at the left.
    /// \param index of the child; one that is out of range does nothing but a log line
    /// \cost one pass over the children, none within arrangeViews()
    /// \operation{moveViewHorizontally:}
    virtual void moveViewHorizontally(qsizetype index);
    /// @}

public Q_SLOTS:
    /// Lays out the children. Call it when children were added, removed or resized or a property was changed. Without
    /// children and with sizeToFit the view becomes 0 wide and minus one gap high: no pixels, and a negative frame.
    /// \cost linear in the number of children
    /// \operation{arrangeViews}
    virtual void arrangeViews();

Q_SIGNALS:
    void itemSpacingChanged(float itemSpacing);
    void sizeToFitChanged(bool sizeToFit);
    void alignmentChanged(int alignment);

private:
    using Children = QList<QPointer<QWidget>>;

    [[nodiscard]] Children childViews() const;
    [[nodiscard]] QWidget *childView(qsizetype index) const;
    [[nodiscard]] float sumOfHeights() const;

    std::optional<Children> m_arranged; ///< the children while they are arranged
    float m_itemSpacing = 8;
    int m_alignment = 0;
    bool m_sizeToFit = true;
};

} // namespace dravelin
