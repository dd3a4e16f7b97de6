# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

include(GNUInstallDirs)
install(TARGETS Dravelin EXPORT DravelinTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
