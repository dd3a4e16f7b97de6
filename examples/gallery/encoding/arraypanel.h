// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/encoding.h>
#include <dravelin/platform/timer.h>

#include <QtCore/QBasicTimer>
#include <QtWidgets/QWidget>

#include <variant>

class PlotView;
class QComboBox;
class QLabel;
class QSpinBox;

/// A typed array, filled, turned round and sorted before one's eyes.
class ArrayPanel : public QWidget
{
    Q_OBJECT

public:
    ArrayPanel();

    void fill();
    /// Sorts longer and longer beginnings, a step each frame; finished() ends it.
    void sortSlowly(bool ascending);
    [[nodiscard]] bool isSorting() const { return m_frames.isActive(); }
    /// So many elements at the start are sorted.
    [[nodiscard]] quint64 sortedCount() const { return m_done; }
    void reverse();

    void chooseType(int index);
    void choosePattern(int index);
    [[nodiscard]] bool isSorted(bool ascending) const;
    [[nodiscard]] QString state() const;

Q_SIGNALS:
    void finished();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    using Arrays = std::variant<dravelin::NativeInt8Array, dravelin::NativeUInt8Array, dravelin::NativeBoolArray,
                                dravelin::NativeInt16Array, dravelin::NativeUInt16Array, dravelin::NativeInt32Array,
                                dravelin::NativeUInt32Array, dravelin::NativeInt64Array, dravelin::NativeUInt64Array,
                                dravelin::NativeFloatArray, dravelin::NativeDoubleArray>;

    void makeArray(int type);
    void sortBeginning(quint64 count);
    void showArray();

    Arrays m_array;
    QBasicTimer m_frames;
    bool m_isAscending = true;
    quint64 m_done = 0;
    QComboBox *m_type, *m_pattern;
    QSpinBox *m_count;
    PlotView *m_plot;
    QLabel *m_state;
};
