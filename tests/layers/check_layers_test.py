"""The rules of tools/check_layers.py on small trees: each breach is found, and what is allowed passes."""
import os
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools"))
from check_layers import check


class CheckLayers(unittest.TestCase):
    def breaches(self, **files):
        """Of a sound tree with these files in addition; a name is written with __ for / and _ for the last point."""
        tree = {"platform__values__String_h": "", "platform__values__String_cpp": "#include <QString>",
                "platform__widgets__Window_h": '#include "platform/values/String.h"',
                "platform__qt__Native_h": "#include <QWidget>",
                "stack__Curve_h": '#include "platform/values/String.h"', "stack__Curve_cpp": '#include "stack/Curve.h"',
                "stack__CMakeLists_txt": "vornalite_arithmetic(stack SOURCES Curve.cpp  # one\n  Smooth.cpp)",
                "mainwindow__Main_h": '#include "platform/widgets/Window.h"',
                "mainwindow__Main_cpp": '#include "mainwindow/Main.h"\n#include "stack/Curve.h"'}
        tree.update(files)
        with tempfile.TemporaryDirectory() as root:
            for name, text in tree.items():
                stem, end = name.replace("__", "/").rsplit("_", 1)
                path = os.path.join(root, f"{stem}.{end}")
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w") as file:
                    file.write(text)
            return check(root)

    def test_sound_tree_passes(self):
        self.assertEqual(self.breaches(), [])
        self.assertEqual(self.breaches(tests__platform__A_cpp="#include <QImage>\n#include <tiffio.h>",
                                       stack__Smooth_cpp='#include "hwy/foreach_target.h"'), [])

    def test_each_breach_is_found(self):
        for files in (dict(stack__Loose_cpp="#include <QImage>"),
                      dict(stack__Loose_cpp="#  include <tiffio.h>"),
                      dict(tests__stack__A_cpp="#include <png.h>"),
                      dict(tests__stack__A_cpp="#include <X11/Xlib.h>"),
                      dict(platform__values__String_h="#include <QString>"),
                      dict(platform__Novel_h=""),
                      dict(stack__Loose_cpp='#include "../platform/values/String.h"'),
                      dict(stack__Loose_cpp='#include "platform/qt/Native.h"'),
                      dict(tests__stack__A_cpp='#include "platform/qt/Native.h"'),
                      dict(platform__qt__Native_cpp='#include "stack/Curve.h"'),
                      dict(catalogue__A_cpp='#include "stack/Curve.h"'),
                      dict(mainwindow__Main_h='#include "platform/widgets/Window.h"\n#include "output/About.h"',
                           output__About_h='#include "platform/widgets/Window.h"'),
                      dict(stack__Smooth_cpp='#include "platform/widgets/Window.h"'),
                      dict(stack__Smooth_cpp='#include "stack/Hidden.h"',
                           stack__Hidden_h='#include "mainwindow/Main.h"'),
                      dict(platform__values__String_cpp='#include "platform/widgets/Window.h"')):
            with self.subTest(files):
                self.assertNotEqual(self.breaches(**files), [])


if __name__ == "__main__":
    unittest.main()
