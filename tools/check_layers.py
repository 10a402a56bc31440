#!/usr/bin/python3
"""Checks that includes follow the layers of the house (docs/house.md). Prints each breach and ends with 1 if there is
one. Without an argument it checks the tree that it lies in."""
import os
import re
import sys

# Headers of platform/ that know no widget and no event loop. Every other header of platform/ stands in WIDGETS.
VALUES = """Array BackgroundTask BinaryStream Color DragItem Errors FileType FolderItem Graphics GreyScaling Numbers PNGu
    Parallel Picture PictureReaders PictureSequence PlaneView ReaderTools Ref String""".split()
WIDGETS = """Application Buttons Canvas Control Dialogs Displays Inputs Listbox MenuBar MouseCursor Screen Testing Timer
    Window""".split()

# Rooms whose plain functions are arithmetic: the files that their CMakeLists.txt gives to vornalite_arithmetic.
ROOMS = ["catalogue", "stack", "mainwindow", "composite", "output"]
# Where the toolkit and the decoders may be named (benches compare with both), and X11, which the tests' own driver speaks; it keeps what it sees on
# the screen by libpng and so owes nothing to the readers that it helps to test.
TOOLKIT = re.compile(r"^(Q[A-Za-z]|qt?[a-z]*\.h|private/q|qpa/|tiff|png|xcb/)")
TOOLKIT_FOLDERS = ("platform/", "tests/platform/", "tests/support/", "bench/")
X11 = re.compile(r"^X11/")
X11_FOLDERS = ("platform/qt/", "tools/xdriver/")
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
    for room in ROOMS:
        lists = os.path.join(root, room, "CMakeLists.txt")
        if not os.path.exists(lists):
            continue
        with open(lists, encoding="utf-8") as file:
            text = re.sub(r"#.*", "", file.read())
        for call in re.findall(r"vornalite_arithmetic\(([^)]*)\)", text):
            files += [f"{room}/{name}" for name in call.split()[1:] if f"{room}/{name}" in tree]
    return files


def reached(tree, start):
    """Every file of the tree that `start` includes at first or second hand -> the file that includes it."""
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
               if path.endswith(".h") and not path.startswith("platform/") and (True, "platform/Window.h") in includes}
    for path, includes in sorted(tree.items()):
        name = path[len("platform/"):-len(".h")]
        if path.startswith("platform/") and path.endswith(".h") and "/" not in name:
            if (name in VALUES) == (name in WIDGETS):
                breaches.append(f"{path}: name it in VALUES or in WIDGETS of tools/check_layers.py")
        for quoted, header in includes:
            public_header = path.startswith("platform/") and path.endswith(".h") and path.count("/") == 1
            if (TOOLKIT.match(header) and DRIVER.get(path) != header
                    and (public_header or not path.startswith(TOOLKIT_FOLDERS))):
                breaches.append(f"{path}: includes {header}; only implementation files of platform/ name the toolkit")
            if X11.match(header) and not path.startswith(X11_FOLDERS):
                breaches.append(f"{path}: includes {header}")
            if quoted and header not in tree and not FOREIGN.search(header) and not TOOLKIT.match(header):
                breaches.append(f"{path}: includes {header}, which is no path from the top of the tree")
            if header.startswith("platform/qt/") and not path.startswith(TOOLKIT_FOLDERS):
                breaches.append(f"{path}: includes {header}; platform/qt/ belongs to platform/ alone")
            if path.startswith("platform/") and header in tree and not header.startswith("platform/"):
                breaches.append(f"{path}: includes {header}; the platform knows no room")
            if path in windows and header in windows:
                breaches.append(f"{path}: includes {header}; windows know one another in .cpp files only")

    widget_headers = {f"platform/{name}.h" for name in WIDGETS}
    value_files = [path for path in tree if path in {f"platform/{name}{end}" for name in VALUES for end in (".h", ".cpp")}]
    for path in sorted(value_files + arithmetic_files(root, tree)):
        for header, parent in sorted(reached(tree, path).items()):
            if header in widget_headers or header in windows or header.startswith("appcore/"):
                breaches.append(f"{path}: reaches {header} through {parent}; it stands below the widgets")
    return breaches


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    breaches = check(root)
    for breach in breaches:
        print(breach)
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
