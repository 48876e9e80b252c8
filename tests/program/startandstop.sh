#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Opens the program $MORVANE, asks it to end once its window is there, and tells how it ended.
set -euo pipefail

# A bus that the program starts for itself would outlive it, and a tracer would wait for that.
DBUS_SESSION_BUS_ADDRESS=disabled: "$MORVANE" &
program=$!
until xdotool search --onlyvisible --pid "$program" >/dev/null 2>&1; do
    kill -0 "$program"
    sleep 0.1
done
kill -TERM "$program"
wait "$program"
