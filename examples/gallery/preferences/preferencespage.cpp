// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "preferences/preferencespage.h"

#include "binding.h"
#include "preferences/colorbutton.h"

#include <dravelin/platform/userdefaults.h>

#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

using namespace Qt::StringLiterals;
using dravelin::UserDefaults;

namespace {

template <class SpinBox>
SpinBox *makeSpinBox(double lowest, double highest, double step)
{
    auto *box = new SpinBox;
    using Value = decltype(box->value());
    box->setRange(Value(lowest), Value(highest));
    box->setSingleStep(Value(step));
    return box;
}

/// Edits bytes that are text: a QLineEdit whose text a property of bytes takes as UTF-8.
QLineEdit *makeTextEditor(const QString &placeholder)
{
    auto *editor = new QLineEdit;
    editor->setPlaceholderText(placeholder);
    return editor;
}

} // namespace

PreferencesPage::PreferencesPage()
{
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(makeControls());
    layout->addWidget(makeStoreView(), 1);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(0);
    connect(&m_refresh, &QTimer::timeout, this, &PreferencesPage::showStore);
    open();
}

QString PreferencesPage::title() const { return tr("Preferences"); }

QWidget *PreferencesPage::makeControls()
{
    auto *controls = new QWidget;
    controls->setFixedWidth(360);
    auto *form = new QFormLayout(controls);
    addControls(form);
    addButtons(form);
    return controls;
}

void PreferencesPage::addControls(QFormLayout *form)
{
    auto *zoom = makeSpinBox<QDoubleSpinBox>(0.1, 16, 0.1);
    zoom->setDecimals(3);
    m_editors = {new QCheckBox(tr("Show the &grid")),
                 makeTextEditor(tr("Name")),
                 makeSpinBox<QSpinBox>(1, 9999, 1),
                 makeSpinBox<QDoubleSpinBox>(0, 1, 0.05),
                 zoom,
                 new ColorButton,
                 makeTextEditor(tr("Stored as bytes"))};
    const QStringList keys{u"showGrid"_s, u"author"_s, u"pages"_s, u"opacity"_s, u"zoom"_s, u"paper"_s, u"notes"_s};
    const QStringList labels{tr("Truth value"),   tr("Text: &author"),  tr("Integer: &pages"), tr("Float: &opacity"),
                             tr("Double: &zoom"), tr("Colour: pape&r"), tr("Bytes: &notes")};
    for (qsizetype i = 0; i < keys.size(); ++i) {
        m_editors[i]->setObjectName(keys[i]);
        form->addRow(labels[i], m_editors[i]);
    }
}

void PreferencesPage::addButtons(QFormLayout *form)
{
    const auto add = [&](const QString &text, const QKeySequence &shortcut, void (PreferencesPage::*action)()) {
        auto *button = new QPushButton(u"%1 (%2)"_s.arg(text, shortcut.toString(QKeySequence::NativeText)));
        button->setShortcut(shortcut);
        connect(button, &QPushButton::clicked, this, action);
        form->addRow(button);
    };
    add(tr("Export to a file…"), QKeySequence::Save, &PreferencesPage::exportToFile);
    add(tr("Import from a file…"), QKeySequence::Open, &PreferencesPage::importFromFile);
    add(tr("Reset to the defaults"), QKeySequence(u"Ctrl+R"_s), &PreferencesPage::reset);
    m_message = new QLabel;
    m_message->setWordWrap(true);
    m_message->setMinimumHeight(60);
    m_message->setAlignment(Qt::AlignTop);
    form->addRow(m_message);
    auto *hint =
        new QLabel(tr("Every change is on disk at once. Start the gallery a second time: each window follows what "
                      "the other one changes."));
    hint->setWordWrap(true);
    form->addRow(hint);
}

QWidget *PreferencesPage::makeStoreView()
{
    auto *view = new QWidget;
    auto *layout = new QVBoxLayout(view);
    m_storePath = new QLabel;
    m_storePath->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_store = new QPlainTextEdit;
    m_store->setReadOnly(true);
    m_store->setTabChangesFocus(true);
    m_store->setAccessibleName(tr("Store file"));
    m_store->setFont(QFont(u"Monospace"_s, 9));
    m_store->setTabStopDistance(20);
    layout->addWidget(m_storePath);
    layout->addWidget(m_store);
    return view;
}

void PreferencesPage::open()
{
    qDeleteAll(findChildren<Binding *>());
    m_manager.reset();
    m_settings = std::make_shared<Settings>();
    m_manager = std::make_unique<dravelin::PreferenceManager>(m_settings);
    bind();

    UserDefaults *store = UserDefaults::standardUserDefaults();
    store->setWatching(true);
    connect(store, &UserDefaults::defaultsChanged, m_manager.get(), &dravelin::PreferenceManager::restorePreferences);
    connect(store, &UserDefaults::defaultsChanged, &m_refresh, qOverload<>(&QTimer::start), Qt::UniqueConnection);
    m_storePath->setText(store->filePath());
    showStore();
}

void PreferencesPage::bind()
{
    for (QWidget *editor : std::as_const(m_editors))
        new Binding(m_settings.get(), editor->objectName(), editor);
}

void PreferencesPage::showStore()
{
    QFile file(UserDefaults::standardUserDefaults()->filePath());
    const QString content = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : tr("(no file yet)");
    if (content != m_store->toPlainText())
        m_store->setPlainText(content);
}

void PreferencesPage::say(const QString &message) { m_message->setText(message); }

void PreferencesPage::exportToFile()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Export preferences"), u"gallery-preferences.txt"_s);
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    const QByteArray text = m_manager->exportPreferences().toLatin1();
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() && file.commit();
    say(written ? tr("Exported to %1").arg(path) : tr("Not exported: %1").arg(file.errorString()));
}

void PreferencesPage::importFromFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Import preferences"));
    if (path.isEmpty())
        return;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        importText(QString::fromUtf8(file.readAll()));
    else
        say(tr("Not imported: %1").arg(file.errorString()));
}

bool PreferencesPage::importText(const QString &text)
{
    QString message;
    const bool imported = m_manager->importPreferences(text, &message);
    say(imported ? tr("Imported.") : message);
    return imported;
}

void PreferencesPage::reset()
{
    m_manager->resetPreferencesToDefaults();
    say(tr("Reset to the defaults."));
}
