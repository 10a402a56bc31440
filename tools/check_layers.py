#!/usr/bin/python3
"""Checks that includes follow the layers (docs/house.md): a folder includes only the folders that ALLOWED lists for it.
Prints each breach and exits with 1 if there is one. Checks the tree that it is part of, or the one given."""
import os
import re
import sys

PLATFORM = ["platform/values", "platform/pictures", "platform/widgets"]
# Each folder of the product, and the other folders that its files may include.
ALLOWED = {
    "platform/values": [],
    "platform/pictures": ["platform/values", "platform/pictures/readers"],
    "platform/pictures/readers": ["platform/values", "platform/pictures"],
    "platform/widgets": ["platform/values", "platform/pictures"],
    "platform/qt": PLATFORM,
    "catalogue": PLATFORM + ["appcore", "mainwindow"],
    "stack": PLATFORM + ["appcore", "catalogue", "composite", "mainwindow"],
    "mainwindow": PLATFORM + ["appcore", "catalogue", "stack"],
    "composite": PLATFORM + ["appcore", "mainwindow", "stack"],
    "output": PLATFORM + ["appcore", "catalogue", "composite", "mainwindow"],
    "appcore": PLATFORM + ["catalogue", "stack", "mainwindow", "composite", "output"],
}
# What arithmetic, the files that a CMakeLists.txt passes to vornalite_arithmetic, may not include even indirectly.
ABOVE_ARITHMETIC = ("platform/widgets/", "platform/qt/", "appcore/")
# The toolkit and the decoders may be included by the implementation files of platform/, and by tests and benchmarks
# that compare with them. xdriver stores screenshots with libpng itself, so that it shares no code with the readers that
# it helps to test.
TOOLKIT = re.compile(r"^(Q[A-Za-z]|qt?[a-z]*\.h|private/q|qpa/|tiff|png|xcb/)")
TOOLKIT_FOLDERS = ("platform/", "tests/platform/", "tests/support/", "bench/")
X11 = re.compile(r"^X11/")
X11_FOLDERS = ("platform/qt/", "tools/xdriver/", "tests/platform/")
DRIVER = {"tools/xdriver/Bitmap.cpp": "png.h"}
# Quoted includes that are not files of this tree.
FOREIGN = re.compile(r"^hwy/|\.moc$")

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.M)


def read_tree(root):
    """Every C++ file below the root, as path -> list of (is quoted, name) of its includes."""
    tree = {}
    for folder, folders, files in os.walk(root):
        folders[:] = [name for name in folders if name not in ("build", "out") and not name.startswith(".")]
        for name in files:
            if name.endswith((".h", ".cpp", ".inc")):
                path = os.path.join(folder, name)
                with open(path, encoding="utf-8") as file:
                    tree[os.path.relpath(path, root).replace(os.sep, "/")] = [
                        (mark == '"', header) for mark, header in INCLUDE.findall(file.read())]
    return tree


def arithmetic_files(root, tree):
    files = []
    for room in ALLOWED:
        lists = os.path.join(root, room, "CMakeLists.txt")
        if not os.path.exists(lists):
            continue
        with open(lists, encoding="utf-8") as file:
            text = re.sub(r"#.*", "", file.read())
        for call in re.findall(r"vornalite_arithmetic\(([^)]*)\)", text):
            files += [f"{room}/{name}" for name in call.split()[1:] if f"{room}/{name}" in tree]
    return files


def reached(tree, start):
    """Every file of the tree that `start` includes directly or indirectly -> the file that includes it."""
    parents, todo = {}, [start]
    while todo:
        path = todo.pop()
        for quoted, header in tree[path]:
            if quoted and header in tree and header not in parents:
                parents[header] = path
                todo.append(header)
    return parents


def check(root):
    tree = read_tree(root)
    breaches = []
    windows = {path for path, includes in tree.items()
               if path.endswith(".h") and not path.startswith("platform/")
               and (True, "platform/widgets/Window.h") in includes}
    for path, includes in sorted(tree.items()):
        folder = os.path.dirname(path)
        public_header = path.startswith("platform/") and path.endswith(".h") and folder != "platform/qt"
        for quoted, header in includes:
            target = os.path.dirname(header)
            if (TOOLKIT.match(header) and DRIVER.get(path) != header
                    and (public_header or not path.startswith(TOOLKIT_FOLDERS))):
                breaches.append(f"{path}: includes {header}; only implementation files of platform/ may")
            if X11.match(header) and not path.startswith(X11_FOLDERS):
                breaches.append(f"{path}: includes {header}")
            if quoted and header not in tree and not FOREIGN.search(header) and not TOOLKIT.match(header):
                breaches.append(f"{path}: includes {header}, which is not a path from the top of the tree")
            if quoted and header in tree and folder in ALLOWED and target not in [folder] + ALLOWED[folder]:
                breaches.append(f"{path}: includes {header}; {folder}/ may not include {target}/")
            if header.startswith("platform/qt/") and not path.startswith(("platform/qt/", "tests/support/")):
                breaches.append(f"{path}: includes {header}; only platform/qt/ and tests/support/ may")
            if path in windows and header in windows:
                breaches.append(f"{path}: includes {header}; a window's header may not include another's")
        if folder not in ALLOWED and path.startswith("platform/"):
            breaches.append(f"{path}: {folder}/ is missing in ALLOWED of tools/check_layers.py")

    for path in sorted(arithmetic_files(root, tree)):
        for header, parent in sorted(reached(tree, path).items()):
            if header in windows or header.startswith(ABOVE_ARITHMETIC):
                breaches.append(f"{path}: reaches {header} through {parent}; arithmetic may not use widgets or windows")
    return breaches


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    breaches = check(root)
    for breach in breaches:
        print(breach)
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
