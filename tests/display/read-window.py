# SPDX-License-Identifier: MIT
"""Reads the window of the process argv[1], which shows the demo database, through AT-SPI."""
import subprocess
import sys
import time

import pyatspi

PATIENCE_SECONDS = 60
CONTROLS = {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY,
            pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE, pyatspi.ROLE_LIST, pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_MENU_ITEM,
            pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_RADIO_BUTTON}


def eventually(look, what):
    """The first result of look() that is something; what it cannot reach yet may come."""
    deadline = time.monotonic() + PATIENCE_SECONDS
    while time.monotonic() < deadline:
        try:
            if result := look():
                return result
        except Exception as error:  # an object went while it was looked at
            last = error
        time.sleep(0.2)
    sys.exit(f"not seen: {what}")


def descendants(node, depth=12):
    """All that can be seen below a node, but for the cells of tables, which are very many."""
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is None:
            continue
        yield child
        if depth > 0 and child.getRole() not in (pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE, pyatspi.ROLE_TREE_TABLE):
            yield from descendants(child, depth - 1)


def main_window(process):
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.get_process_id() == process:
            for window in app:
                if "demo" in window.name:
                    return window
    return None


def find(window, role, name):
    return next((n for n in descendants(window) if n.getRole() == role and n.name == name), None)


def press(*keys):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)


def expect(seen, wanted, what):
    if seen != wanted:
        sys.exit(f"{what}: {seen!r} in place of {wanted!r}")


window = eventually(lambda: main_window(int(sys.argv[1])), "the window with the database")
press("Down")  # Categories, the first table
records = eventually(lambda: find(window, pyatspi.ROLE_TABLE, "Records"), "the grid")
grid = records.queryTable()
eventually(lambda: grid.nRows == 8, "the rows of the table")
expect(grid.nColumns, 4, "columns")
expect(grid.getAccessibleAt(1, 1).name, "Coffee", "cell")
expect(grid.getColumnDescription(1), "CategoryName", "header of a column")
expect(grid.getRowDescription(1).strip(), "2", "header of a row")

nameless = [n.getRoleName() for n in descendants(window)
            if n.getRole() in CONTROLS and n.getState().contains(pyatspi.STATE_SHOWING) and not n.name]
expect(nameless, [], "controls without a name")
for role, name in [(pyatspi.ROLE_TREE, "File list"), (pyatspi.ROLE_TEXT, "Search"),
                   (pyatspi.ROLE_TEXT, "Filter files and tables"), (pyatspi.ROLE_PUSH_BUTTON, "Open"),
                   (pyatspi.ROLE_PUSH_BUTTON, "Hide File List")]:
    eventually(lambda: find(window, role, name), f"{name} ({role})")
print("read:", sum(1 for _ in descendants(window)), "objects")
