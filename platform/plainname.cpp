// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/plainname.h"

namespace dravelin {

namespace {

bool take(std::string_view &rest, std::string_view prefix) noexcept
{
    const bool taken = rest.starts_with(prefix);
    rest.remove_prefix(taken ? prefix.size() : 0);
    return taken;
}

/// Takes a name with its length in front, "4save".
std::string_view takeName(std::string_view &rest) noexcept
{
    std::size_t length = 0;
    const auto number = std::from_chars(rest.data(), rest.data() + rest.size(), length);
    const auto digits = std::size_t(number.ptr - rest.data());
    if (digits == 0 || number.ec != std::errc() || length > rest.size() - digits)
        return {};
    const std::string_view name = rest.substr(digits, length);
    rest.remove_prefix(digits + length);
    return name.starts_with("_GLOBAL__N") ? "(anonymous namespace)" : name;
}

bool appendName(LineBuffer &line, std::string_view &rest) noexcept
{
    take(rest, "L"); // of this file only
    const std::string_view name = takeName(rest);
    line.append(name);
    return !name.empty();
}

/// \return whether everything up to the parameters could be read
bool appendNames(LineBuffer &line, std::string_view rest) noexcept
{
    const bool nested = take(rest, "N");
    while (nested && (take(rest, "V") || take(rest, "K"))) {
    }
    line.append(take(rest, "St") ? "std::" : "");
    if (!appendName(line, rest))
        return false;
    while (nested && !rest.starts_with("E")) {
        if (!appendName(line.append("::"), rest))
            return false;
    }
    return nested || !rest.starts_with("I");
}

} // namespace

void appendPlainName(LineBuffer &line, std::string_view linkerName) noexcept
{
    LineBuffer plain;
    const bool read = linkerName.starts_with("_Z") && appendNames(plain, linkerName.substr(2));
    line.append(read ? plain.view() : linkerName);
}

} // namespace dravelin
