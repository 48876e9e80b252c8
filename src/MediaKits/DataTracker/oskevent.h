// SPDX-License-Identifier: MIT
#pragma once

/// A numbered event of the collector; texts in UTF-8.
struct OskEvent
{
    int id;
    const char *page;
    /// "show", "click" or "custom"
    const char *type;
    const char *code;
    const char *name;
};

/// The event's row, null for a number that has none.
const OskEvent *findOskEvent(int id);
