// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace dravelin::detail {

struct FreeReply
{
    void operator()(void *reply) const { std::free(reply); }
};

/// What the X server sent: a reply or an event, empty when the question failed.
template <class Reply>
using XcbReply = std::unique_ptr<Reply, FreeReply>;

/// \param number as xcb_connect() gives it
inline xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < number; ++i)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace dravelin::detail
