// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

/// Until the end of the scope, each failure names the header of platform/include and the function
/// whose contract the port breaks.
#define CONTRACT(header, function) \
    SCOPED_TRACE("the contract is in platform/include/" header ", " function)
