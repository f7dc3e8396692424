"""Run in Blender, which needs no display: blender -b --factory-startup --python-exit-code 1 -P addon_test.py
The engine's programs are those of the folder ENGINE_PROGRAMS, else of the release build or in PATH."""

import importlib.util
import os
import sys
import tempfile
import types
import unittest

import bpy

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools"))
import blender_addon  # noqa: E402
from blender_addon import fields, findings, programs  # noqa: E402

if "ENGINE_PROGRAMS" in os.environ:
    programs.preferences = lambda: types.SimpleNamespace(programs=os.environ["ENGINE_PROGRAMS"])
needs_export = unittest.skipUnless(importlib.util.find_spec("numpy"), "Blender exports glTF by NumPy only")


class AddOn(unittest.TestCase):
    def setUp(self):
        bpy.ops.wm.read_factory_settings(use_empty=True)
        blender_addon.register()
        self.addCleanup(blender_addon.unregister)
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def read(self, *path):
        with open(os.path.join(self.folder, *path), encoding="utf-8") as text:
            return text.read()

    def test_what_is_registered_goes_again(self):
        for name in ("ENGINE_PT_world", "ENGINE_PT_object", "ENGINE_PT_settings", "VIEW3D_MT_engine_add"):
            self.assertTrue(hasattr(bpy.types, name), name)
        blender_addon.unregister()
        for name in ("ENGINE_PT_world", "ENGINE_OT_play", "VIEW3D_MT_engine_add"):
            self.assertFalse(hasattr(bpy.types, name), name)
        self.assertFalse(hasattr(bpy.types.Object, "engine_role"))
        blender_addon.register()

    def test_fields_are_plain_properties(self):
        thing = bpy.data.objects.new("Box", None)
        thing["PHYSICS"] = [1.0, 0.25, 0.125]
        thing.engine_bounce = 0.5
        self.assertEqual(thing["PHYSICS"], "1 0.5 0.125")
        self.assertEqual(thing.engine_role, "SCENERY")
        thing.engine_role = "START"
        thing.engine_player = 2
        thing.engine_invisible = True
        self.assertEqual(dict(thing.items()), {"PLAYERSPAWNPOINT": 2, "INVISIBLE": 1})
        thing.engine_invisible = False
        self.assertNotIn("INVISIBLE", thing)

    @needs_export
    def test_additions_become_a_world(self):
        bpy.context.scene["RESOLUTION"] = "640 480 32"
        bpy.context.scene["MOUSESENSITIVITY"] = 0.00005
        for kind in ("room", "door", "lamp", "player"):
            bpy.ops.engine.add(kind=kind)
        bpy.context.scene.objects["Start"].location = (0, 2, 0)
        bpy.ops.engine.set_keys(player=1, value=fields.KEY_SETS[1][0])
        bpy.ops.engine.export_world(directory=self.folder)
        settings = self.read("settings.atr")
        for line in ("RESOLUTION 640 480 32", "MOUSESENSITIVITY 0.00005", "PLAYERCOUNT 2",
                     "PLAYERKEYBOARDCONTROLS 1 65 68 82 70 87 83 81 69"):
            self.assertIn(f"*{line}\n", settings)
        listed = programs.run("check_scene", "--list", self.folder).stdout
        self.assertIn("player 0: device mouse, moves Player, camera Eyes", listed)
        # 8 m wide, 6 deep, walls of 0.2, a porch of 3: at 5.5 units for a metre.
        self.assertIn("low (-23.1, -16.5, -1.1), high (23.1, 35.2, 16.5)", listed)
        self.assertIn("group 1: leader Porter, members (Door", listed)
        self.assertRegex(listed, r"key tracks \(2\d\d\)")  # five seconds of fifty
        checked = programs.run("check_scene", self.folder)
        self.assertEqual(checked.returncode, 0, checked.stdout)

    @needs_export
    def test_findings_know_their_objects(self):
        bpy.ops.engine.add(kind="room")
        bpy.ops.engine.add(kind="player")
        names = bpy.context.scene.objects
        names["Player"].name = "The héro 1"
        del names["Start"]["PLAYERSPAWNPOINT"]
        names["Room"]["COLIDER"] = 1
        bpy.ops.engine.check()
        found = {finding.thing: finding.text for finding in bpy.context.window_manager.engine_findings}
        self.assertIn("COLIDER", found["Room"])
        self.assertIn("PLAYERSPAWNPOINT", found["The héro 1"])
        for name, finding in (("Room", {"object": "RoomWalls2"}), ("The héro 1", {"text": 'object "Thehero1": no'}),
                              ("", {"file": "settings.atr", "line": 1, "text": "no"})):
            self.assertEqual(findings.object_of(finding, self.folder), name)
        manager = bpy.context.window_manager
        manager.engine_finding_index = [finding.thing for finding in manager.engine_findings].index("Room")
        self.assertEqual(bpy.context.selected_objects, [names["Room"]])
        self.assertEqual(bpy.context.object, names["Room"])


if __name__ == "__main__":
    sys.exit(not unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful())
