#!/usr/bin/python3
# Walks the accessibility tree (AT-SPI) of a running program as a screen reader sees it, and
# calls actions of its objects. Runs inside the D-Bus session that scripts/a11y-walk.sh sets up.
#
#   a11y-tree.py apps                               the applications on the bus
#   a11y-tree.py dump [--app NAME] [--depth N] [--from SELECTOR] [--showing] [--rows]
#   a11y-tree.py find SELECTOR [--app NAME]             the objects that match, with their paths
#   a11y-tree.py action SELECTOR [ACTION] [--app NAME]  doAction on the first match (default: first action)
#   a11y-tree.py wait SELECTOR [--timeout S] [--app NAME]
#   a11y-tree.py focus [--app NAME]                 the object that has the focus
#
# SELECTOR picks objects: "role=name" (exact name), "role~text" (name contains text), "=name" (any
# role), "#0.2.1" (a path of child indexes from the application), "role" alone; several selectors
# joined by " > " search each inside the first match of the one before ("frame=MultiSMS > push
# button=Neu"). Roles are AT-SPI's role names ("push button", "combo box", "link", "frame").
import argparse
import sys
import time

import pyatspi

# Objects below these roles are listed once, without their rows, unless --rows is given: a table
# of 100 rows says little more than one of 3.
ROW_ROLES = {"table row", "table cell", "list item", "tree item"}
INTERESTING_STATES = [
    "active", "checked", "collapsed", "editable", "enabled", "expandable", "expanded", "focusable",
    "focused", "modal", "multi line", "pressed", "selectable", "selected", "sensitive", "showing",
    "visible", "offscreen", "invalid", "read only", "checkable", "default", "iconified",
]


def states_of(obj):
    names = set()
    for s in obj.getState().getStates():
        names.add(pyatspi.stateToString(s).replace("_", " "))
    return [s for s in INTERESTING_STATES if s in names]


def role_of(obj):
    try:
        return obj.getRoleName()
    except Exception:
        return "?"


def safe(fn, default=None):
    try:
        return fn()
    except Exception:
        return default


def describe(obj, with_text=True):
    parts = ["[%s]" % role_of(obj), repr(safe(lambda: obj.name, ""))]
    desc = safe(lambda: obj.description, "")
    if desc:
        parts.append("desc=%r" % desc)
    st = safe(lambda: states_of(obj), [])
    if st:
        parts.append("{%s}" % ",".join(st))
    action = safe(obj.queryAction)
    if action is not None and action.nActions:
        parts.append("actions=%s" % ",".join(action.getName(i) for i in range(action.nActions)))
    if with_text:
        text = safe(obj.queryText)
        if text is not None:
            parts.append("text=%r" % text.getText(0, -1)[:80])
        value = safe(obj.queryValue)
        if value is not None:
            parts.append("value=%s" % safe(lambda: value.currentValue))
    relations = []
    for rel in safe(obj.getRelationSet, []) or []:
        kind = pyatspi.relationToString(rel.getRelationType()).lower().replace("_", "-")
        targets = [rel.getTarget(i) for i in range(rel.getNTargets())]
        relations.append("%s:%s" % (kind, "|".join("%s %r" % (role_of(t), safe(lambda: t.name, ""))
                                                     for t in targets)))
    if relations:
        parts.append("rel=" + ";".join(relations))
    attrs = [a for a in (safe(obj.getAttributes, []) or []) if not a.startswith("toolkit")]
    if attrs:
        parts.append("attrs=" + ",".join(attrs)[:160])
    return " ".join(parts)


def applications(name=None):
    desktop = pyatspi.Registry.getDesktop(0)
    apps = [a for a in desktop if a is not None]
    if name:
        apps = [a for a in apps if safe(lambda: a.name, "") == name]
    return apps


def application(name):
    for _ in range(100):
        apps = applications(name)
        if apps:
            return apps[-1]
        time.sleep(0.2)
    sys.exit("no application %r on the accessibility bus (have: %s)" %
             (name, ", ".join(repr(safe(lambda: a.name, "")) for a in applications())))


def children(obj):
    count = safe(lambda: obj.childCount, 0) or 0
    for i in range(count):
        child = safe(lambda: obj.getChildAtIndex(i))
        if child is not None:
            yield i, child


def matches(obj, selector):
    if selector.startswith("#"):
        return False
    for sep in ("=", "~"):
        if sep in selector:
            role, _, name = selector.partition(sep)
            if role and role_of(obj) != role:
                return False
            actual = safe(lambda: obj.name, "") or ""
            return actual == name if sep == "=" else name in actual
    return role_of(obj) == selector


def by_path(root, path):
    obj = root
    for index in path.lstrip("#").split("."):
        if index == "":
            continue
        try:
            obj = obj.getChildAtIndex(int(index)) if obj is not None else None
        except Exception:
            return None
    return obj


def search(root, selector, path="", limit=20000):
    """Breadth first, so that a window is found before the controls of another with the same name."""
    found = []
    queue = [(root, path)]
    seen = 0
    while queue and seen < limit:
        obj, p = queue.pop(0)
        seen += 1
        for i, child in children(obj):
            cp = "%s.%d" % (p, i) if p else str(i)
            if matches(child, selector):
                found.append((child, cp))
            queue.append((child, cp))
    return found


def resolve(app, selectors):
    candidates = [(app, "")]
    for selector in [s.strip() for s in selectors.split(" > ")]:
        obj, path = candidates[0]
        if selector.startswith("#"):
            # A path counts from the application, as the dumps print it.
            found = by_path(app, selector)
            candidates = [(found, selector.lstrip("#"))] if found is not None else []
        else:
            candidates = search(obj, selector, path)
        if not candidates:
            return []
    return candidates


def dump(obj, path, depth, max_depth, rows, hidden, out):
    shown = states_of(obj)
    out.write("%s%s %s\n" % ("  " * depth, path or "app", describe(obj)))
    if max_depth is not None and depth >= max_depth:
        return
    listed_rows = 0
    for i, child in children(obj):
        if not hidden and "showing" not in safe(lambda: states_of(child), []) and depth > 0:
            continue
        if role_of(child) in ROW_ROLES and not rows:
            listed_rows += 1
            if listed_rows > 3:
                continue
        dump(child, "%s.%d" % (path, i) if path else str(i), depth + 1, max_depth, rows, hidden, out)
    if listed_rows > 3:
        out.write("%s... %d more rows/items\n" % ("  " * (depth + 1), listed_rows - 3))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command", choices=["apps", "dump", "find", "action", "wait", "focus"])
    parser.add_argument("selector", nargs="?")
    parser.add_argument("action_name", nargs="?")
    parser.add_argument("--app", default="Quellbote")
    parser.add_argument("--depth", type=int)
    parser.add_argument("--from", dest="start")
    parser.add_argument("--rows", action="store_true")
    parser.add_argument("--showing", action="store_true", help="leave out children that are not showing")
    parser.add_argument("--timeout", type=float, default=20)
    args = parser.parse_args()

    if args.command == "apps":
        for app in applications():
            print(describe(app), "children=%d" % app.childCount)
            for i, child in children(app):
                print("  %d %s" % (i, describe(child)))
        return

    app = application(args.app)
    if args.command == "dump":
        root, path = (app, "")
        if args.start:
            hits = resolve(app, args.start)
            if not hits:
                sys.exit("nothing matches %r" % args.start)
            root, path = hits[0]
        dump(root, path, 0, args.depth, args.rows, not args.showing, sys.stdout)
    elif args.command == "find":
        for obj, path in resolve(app, args.selector):
            print(path, describe(obj))
    elif args.command == "focus":
        hits = [(o, p) for o, p in search_all(app) if "focused" in safe(lambda: states_of(o), [])]
        for obj, path in hits:
            print(path, describe(obj))
    elif args.command == "wait":
        deadline = time.time() + args.timeout
        while time.time() < deadline:
            hits = resolve(application(args.app), args.selector)
            if hits:
                print(hits[0][1], describe(hits[0][0]))
                return
            time.sleep(0.3)
        sys.exit("timed out waiting for %r" % args.selector)
    elif args.command == "action":
        hits = resolve(app, args.selector)
        if not hits:
            sys.exit("nothing matches %r" % args.selector)
        obj, path = hits[0]
        action = obj.queryAction()
        names = [action.getName(i) for i in range(action.nActions)]
        index = names.index(args.action_name) if args.action_name else 0
        print("doAction(%d=%s) on %s %s -> %s" % (index, names[index], path, describe(obj, False),
                                                 action.doAction(index)))


def search_all(root):
    queue = [(root, "")]
    while queue:
        obj, p = queue.pop(0)
        for i, child in children(obj):
            cp = "%s.%d" % (p, i) if p else str(i)
            yield child, cp
            if role_of(child) not in ROW_ROLES:
                queue.append((child, cp))


if __name__ == "__main__":
    main()
