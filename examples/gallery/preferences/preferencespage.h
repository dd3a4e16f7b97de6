// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"
#include "preferences/settings.h"

#include <dravelin/preferences/manager.h>

#include <QtCore/QTimer>

#include <memory>

class QFormLayout;
class QLabel;
class QPlainTextEdit;

/// A setting of every type, bound to its control, beside the file in which the store keeps them.
class PreferencesPage : public Page
{
    Q_OBJECT

public:
    PreferencesPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeControls();
    QWidget *makeStoreView();
    void addControls(QFormLayout *form);
    void addButtons(QFormLayout *form);
    /// Binds the page to the standard user-defaults store as it is now.
    void open();
    void bind();
    void showStore();
    void say(const QString &message);

    void exportToFile();
    void importFromFile();
    bool importText(const QString &text);
    void reset();

    std::shared_ptr<Settings> m_settings;
    std::unique_ptr<dravelin::PreferenceManager> m_manager;
    QList<QWidget *> m_editors;
    QLabel *m_message = nullptr;
    QLabel *m_storePath = nullptr;
    QPlainTextEdit *m_store = nullptr;
    QTimer m_refresh;
};
