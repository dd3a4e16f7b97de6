// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A further process that finds a file again, for the tests: prints the path for the bookmark that it is given in Base64.

#include <dravelin/files/securityscopedbookmark.h>

#include <cstdio>

int main(int, char **argv)
{
    dravelin::SecurityScopedBookmark bookmark(QByteArray::fromBase64(argv[1]));
    std::printf("%s", bookmark.getSecurityUrl().toLocalFile().toLocal8Bit().constData());
    return bookmark.hasSecurityAccess() ? 0 : 1;
}
