// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xinput.h"

#include <dravelin/platform/event.h>

#include "platform/xcbreply.h"

#include <algorithm>
#include <array>

namespace dravelin {

namespace {

/// A pair of key symbols, those of the left and the right key.
using KeyPair = std::array<xcb_keysym_t, 2>;
constexpr KeyPair altKeys{0xFFE9, 0xFFEA};
constexpr KeyPair superKeys{0xFFEB, 0xFFEC};
constexpr KeyPair metaKeys{0xFFE7, 0xFFE8};

/// Which keys make which of the eight modifiers.
struct ModifierKeys
{
    detail::XcbReply<xcb_get_modifier_mapping_reply_t> modifiers;
    detail::XcbReply<xcb_get_keyboard_mapping_reply_t> symbols;
    xcb_keycode_t firstKey;

    [[nodiscard]] bool hasSymbol(xcb_keycode_t key, const KeyPair &wanted) const
    {
        const int perKey = symbols->keysyms_per_keycode;
        const xcb_keysym_t *all = xcb_get_keyboard_mapping_keysyms(symbols.get());
        const xcb_keysym_t *first = all + ptrdiff_t(key - firstKey) * perKey;
        return key >= firstKey
               && std::find_first_of(first, first + perKey, wanted.begin(), wanted.end()) != first + perKey;
    }

    /// The bits of the modifiers that one of the two keys makes.
    [[nodiscard]] quint16 mask(const KeyPair &wanted) const
    {
        quint16 mask = 0;
        const int perModifier = modifiers->keycodes_per_modifier;
        const xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(modifiers.get());
        for (int i = 0; i < 8 * perModifier; ++i) {
            if (hasSymbol(keys[i], wanted))
                mask |= quint16(1U << (i / perModifier));
        }
        return mask;
    }
};

} // namespace

class XInput::Connection
{
public:
    Connection() : m_connection(xcb_connect(nullptr, &m_screen))
    {
        if (isOpen()) {
            makeClock();
            readModifierKeys();
        }
    }
    ~Connection() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(Connection)

    [[nodiscard]] bool isOpen() const { return xcb_connection_has_error(m_connection) == 0; }

    [[nodiscard]] std::optional<XInputState> state()
    {
        const detail::XcbReply<xcb_query_pointer_reply_t> reply(
            xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, screen()->root), nullptr));
        if (!reply)
            return {};
        if (keyboardChanged())
            readModifierKeys();
        return XInputState{flags(reply->mask), buttons(reply->mask), QPoint(reply->root_x, reply->root_y),
                           heightOf(reply->root)};
    }

    /// The server stamps the notice of a property's change.
    [[nodiscard]] std::optional<quint32> time()
    {
        xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, m_clock, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                            nullptr);
        xcb_flush(m_connection);
        while (const detail::XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(m_connection)}) {
            note(*event);
            if (kind(*event) == XCB_PROPERTY_NOTIFY)
                return reinterpret_cast<const xcb_property_notify_event_t &>(*event).time;
        }
        return {};
    }

private:
    static quint8 kind(const xcb_generic_event_t &event) { return event.response_type & 0x7F; }

    [[nodiscard]] xcb_screen_t *screen() const { return detail::screenOf(m_connection, m_screen); }

    [[nodiscard]] int heightOf(xcb_window_t root) const
    {
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
        while (screens.rem > 1 && screens.data->root != root)
            xcb_screen_next(&screens);
        return screens.data->height_in_pixels;
    }

    /// A window that is never shown, whose property asks for the time.
    void makeClock()
    {
        m_clock = xcb_generate_id(m_connection);
        const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_clock, screen()->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    }

    void note(const xcb_generic_event_t &event)
    {
        // Every client is told, without having asked for it.
        m_keyboardChanged |= kind(event) == XCB_MAPPING_NOTIFY;
    }

    [[nodiscard]] bool keyboardChanged()
    {
        while (const detail::XcbReply<xcb_generic_event_t> event{xcb_poll_for_queued_event(m_connection)})
            note(*event);
        return m_keyboardChanged;
    }

    void readModifierKeys()
    {
        m_keyboardChanged = false;
        const xcb_setup_t *setup = xcb_get_setup(m_connection);
        const quint8 count = quint8(setup->max_keycode - setup->min_keycode + 1);
        const auto modifiers = xcb_get_modifier_mapping(m_connection);
        const auto symbols = xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count);
        const ModifierKeys keys{detail::XcbReply<xcb_get_modifier_mapping_reply_t>(
                                    xcb_get_modifier_mapping_reply(m_connection, modifiers, nullptr)),
                                detail::XcbReply<xcb_get_keyboard_mapping_reply_t>(
                                    xcb_get_keyboard_mapping_reply(m_connection, symbols, nullptr)),
                                setup->min_keycode};
        if (!keys.modifiers || !keys.symbols)
            return;
        m_option = keys.mask(altKeys);
        m_command = keys.mask(superKeys);
        if (!m_command)
            m_command = keys.mask(metaKeys) & quint16(~m_option);
    }

    [[nodiscard]] quint64 flags(quint16 mask) const
    {
        const auto flag = [mask](unsigned bits, quint64 value) { return mask & bits ? value : 0; };
        return flag(XCB_MOD_MASK_LOCK, Event::CapsLock) | flag(XCB_MOD_MASK_SHIFT, Event::Shift)
               | flag(XCB_MOD_MASK_CONTROL, Event::Control) | flag(m_option, Event::Option)
               | flag(m_command, Event::Command);
    }

    [[nodiscard]] static quint64 buttons(quint16 mask)
    {
        return (mask & XCB_BUTTON_MASK_1 ? 1 : 0) | (mask & XCB_BUTTON_MASK_3 ? 2 : 0)
               | (mask & XCB_BUTTON_MASK_2 ? 4 : 0);
    }

    int m_screen = 0;
    xcb_connection_t *m_connection;
    xcb_window_t m_clock = XCB_WINDOW_NONE;
    quint16 m_option = XCB_MOD_MASK_1;
    quint16 m_command = XCB_MOD_MASK_4;
    bool m_keyboardChanged = false;
};

XInput::XInput() = default;
XInput::~XInput() = default;

/// A second connection only when the first one broke, since a server that came anew may be there by now.
template <class Question>
auto XInput::ask(Question question)
{
    decltype(question(*m_connection)) answer;
    for (int attempt = 0; attempt < 2 && !answer; ++attempt) {
        if (!m_connection)
            m_connection = std::make_unique<Connection>();
        if (m_connection->isOpen())
            answer = question(*m_connection);
        if (!answer)
            m_connection.reset();
    }
    return answer;
}

std::optional<XInputState> XInput::state()
{
    return ask([](Connection &connection) { return connection.state(); });
}

std::optional<quint32> XInput::time()
{
    return ask([](Connection &connection) { return connection.time(); });
}

} // namespace dravelin
