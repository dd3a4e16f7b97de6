// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>
#include <dravelin/platform/object.h>
#include <dravelin/platform/selector.h>

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

QT_BEGIN_NAMESPACE
class QAction;
QT_END_NAMESPACE

namespace dravelin {

/// Remembers how to take changes back. Each change registers the call that reverses it; what is registered while undo()
/// runs becomes the redo, and the other way round, so one function does for both directions:
///
///     void Canvas::setPaper(const QColor &paper)
///     {
///         m_undo.registerUndoWithTarget(this, [this, old = m_paper] { setPaper(old); });
///         m_undo.setActionName(tr("Paper Colour"));
///         m_paper = paper;
///     }
///     editMenu->addAction(m_undo.createUndoAction(editMenu));     // "Undo Paper Colour"
///     editMenu->addAction(m_undo.createRedoAction(editMenu));
///
/// Calls are grouped into steps, and a step is undone as a whole, the last call first. By default everything registered
/// until control returns to the event loop is one step; see groupsByEvent(). A step without calls leaves no trace.
///
/// Targets are held weakly: calls of targets that are gone do nothing, and steps that have come to nothing but such
/// calls are dropped as they come up. Use a manager from one thread.
class DRAVELIN_EXPORT UndoManager : public Object
{
    Q_OBJECT
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY canUndoChanged)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY canRedoChanged)
    Q_PROPERTY(QString undoActionName READ undoActionName NOTIFY undoActionNameChanged)
    Q_PROPERTY(QString redoActionName READ redoActionName NOTIFY redoActionNameChanged)
    Q_PROPERTY(QString undoMenuItemTitle READ undoMenuItemTitle NOTIFY undoActionNameChanged)
    Q_PROPERTY(QString redoMenuItemTitle READ redoMenuItemTitle NOTIFY redoActionNameChanged)
    Q_PROPERTY(bool groupsByEvent READ groupsByEvent WRITE setGroupsByEvent NOTIFY groupsByEventChanged)
    Q_PROPERTY(int levelsOfUndo READ levelsOfUndo WRITE setLevelsOfUndo NOTIFY levelsOfUndoChanged)

public:
    explicit UndoManager(QObject *parent = nullptr);
    ~UndoManager() override;

    /// Registers a call by name, of an operation that takes one value or none. Registering clears the redo steps, except
    /// while undo() or redo() runs. No target is a line in the log.
    /// \operation{registerUndoWithTarget:selector:object:}
    void registerUndoWithTarget(QObject *target, const Selector &selector, const QVariant &object = {});

    /// The same with an object as the argument, which is kept alive until the step is dropped or done.
    void registerUndoWithTarget(QObject *target, const Selector &selector, const std::shared_ptr<QObject> &object);

    /// The same, checked by the compiler: a callable or member function that takes the target, or nothing.
    /// \operation{registerUndoWithTarget:handler:}
    template <class Target, class Handler>
    requires std::invocable<Handler &, Target *> || std::invocable<Handler &>
    void registerUndoWithTarget(Target *target, Handler handler)
    {
        if constexpr (std::invocable<Handler &, Target *>)
            registerUndo(Action<UndoManager *>(
                target, [target, handler = std::move(handler)]() mutable { std::invoke(handler, target); }));
        else
            registerUndo(Action<UndoManager *>(target, [handler = std::move(handler)]() mutable { handler(); }));
    }

    /// The same: a member function and its argument. An object is given as `std::shared_ptr` and passed as a pointer.
    template <class Target, class Class, class Result, class Parameter, class Argument>
    requires std::derived_from<Target, Class>
    void registerUndoWithTarget(Target *target, Result (Class::*function)(Parameter), Argument object)
    {
        registerUndoWithTarget(target, [function, object = std::move(object)](Target *self) {
            if constexpr (std::convertible_to<const Argument &, Parameter>)
                (self->*function)(object);
            else
                (self->*function)(object.get());
        });
    }

    /// \operation{canUndo}
    [[nodiscard]] bool canUndo() const;
    /// \operation{canRedo}
    [[nodiscard]] bool canRedo() const;
    /// \operation{isUndoing}
    [[nodiscard]] bool isUndoing() const noexcept;
    /// \operation{isRedoing}
    [[nodiscard]] bool isRedoing() const noexcept;

    /// The name of the step that undo() would take back; absent when there is none or it has no name.
    /// \operation{undoActionName}
    [[nodiscard]] QString undoActionName() const;
    /// \operation{redoActionName}
    [[nodiscard]] QString redoActionName() const;
    /// "Undo" and the name, translated in the context of this class.
    /// \operation{undoMenuItemTitle}
    [[nodiscard]] QString undoMenuItemTitle() const;
    /// \operation{redoMenuItemTitle}
    [[nodiscard]] QString redoMenuItemTitle() const;

    /// Names the step being made; when there is none, the last one made. A step undone or redone keeps its name unless
    /// it is given another one meanwhile. Does nothing while registration is disabled.
    /// \operation{setActionName:}
    void setActionName(const QString &name);

    /// Whether all that is registered in one pass of the event loop is one step: true at first. The step ends when
    /// control returns to the event loop, a nested one included, or with undo(). Otherwise each call outside
    /// beginUndoGrouping() and endUndoGrouping() is a step of its own.
    /// \operation{groupsByEvent}
    [[nodiscard]] bool groupsByEvent() const noexcept;
    /// \operation{setGroupsByEvent:}
    void setGroupsByEvent(bool groups);

    /// Makes one step of all calls up to the matching endUndoGrouping(), even over several passes of the event loop,
    /// for instance while the mouse drags. May be nested; the outermost pair makes the step. With groupsByEvent(), a
    /// pair within one pass of the event loop is part of that pass's step.
    /// \operation{beginUndoGrouping}
    void beginUndoGrouping();
    /// Without a group to end it is a line in the log.
    /// \operation{endUndoGrouping}
    void endUndoGrouping();
    /// How many groups begun are not ended yet.
    /// \operation{groupingLevel}
    [[nodiscard]] int groupingLevel() const noexcept;

    /// How many steps can be undone, and redone: the oldest beyond it are dropped. 0, as at first, for any number.
    /// \operation{levelsOfUndo}
    [[nodiscard]] int levelsOfUndo() const noexcept;
    /// \operation{setLevelsOfUndo:}
    void setLevelsOfUndo(int levels);

    /// Between the two, nothing is registered. May be nested.
    /// \operation{disableUndoRegistration}
    void disableUndoRegistration();
    /// \operation{enableUndoRegistration}
    void enableUndoRegistration();
    /// \operation{isUndoRegistrationEnabled}
    [[nodiscard]] bool isUndoRegistrationEnabled() const noexcept;

    /// \operation{removeAllActionsWithTarget:}
    void removeAllActionsWithTarget(const QObject *target);

    /// A menu item or button that undoes: its text is undoMenuItemTitle(), and it is enabled while there is something
    /// to undo. It bears no shortcut, so that there may be several; give one of them `QKeySequence::Undo`.
    /// \return owned by `parent`, or by the caller when that is null; disabled once the manager is gone
    [[nodiscard]] QAction *createUndoAction(QObject *parent);
    /// \copydoc createUndoAction
    [[nodiscard]] QAction *createRedoAction(QObject *parent);

public Q_SLOTS:
    /// Takes the last step back. Does nothing when there is none; within a group or another undo() or redo() it is a
    /// line in the log. When a call throws, the exception passes on: the rest of the step is dropped, and what the calls
    /// before it registered is the redo.
    /// \operation{undo}
    void undo();
    /// \operation{redo}
    void redo();
    /// Forgets all steps, those being made included.
    /// \operation{removeAllActions}
    void removeAllActions();

Q_SIGNALS:
    void canUndoChanged();
    void canRedoChanged();
    void undoActionNameChanged();
    void redoActionNameChanged();
    void groupsByEventChanged();
    void levelsOfUndoChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    class Private;

    void registerUndo(const Action<UndoManager *> &call);
    void openStep();
    void closeStep();
    void replay(bool undoes);
    void finishReplay();
    void announce();

    std::unique_ptr<Private> d;
};

} // namespace dravelin
