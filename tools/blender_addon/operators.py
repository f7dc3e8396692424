"""The buttons: play, check, export, and the choices of a player's device and keys."""

import os

import bpy
from bpy.props import BoolProperty, EnumProperty, IntProperty, StringProperty

from . import fields, findings, programs

keymaps = []


def played_folder():
    return os.path.join(bpy.app.tempdir, "engine_world")


def tell_early_end():
    text = programs.early_end(played_folder())
    if text:
        findings.add(text, is_error=True)
    for window in bpy.context.window_manager.windows:
        for area in window.screen.areas:
            area.tag_redraw()
    return 2.0 if programs.is_running() else None


class Attempt:
    """Does the work, and informs the user if it fails."""

    def execute(self, context):
        try:
            self.work(context)
        except programs.Failure as failure:
            self.report({"ERROR"}, str(failure))
            return {"CANCELLED"}
        return {"FINISHED"}


class ENGINE_OT_play(Attempt, bpy.types.Operator):
    """Export the scene and walk through it. While the engine's window is open, show it the scene as it is now"""
    bl_idname = "engine.play"
    bl_label = "Play"

    def work(self, context):
        findings.replace_by(programs.export_world(context.scene, played_folder()))
        programs.play(played_folder())
        if not bpy.app.timers.is_registered(tell_early_end):
            bpy.app.timers.register(tell_early_end, first_interval=2.0)


class ENGINE_OT_stop(Attempt, bpy.types.Operator):
    """Close the engine's window"""
    bl_idname = "engine.stop"
    bl_label = "Stop"

    def work(self, _context):
        programs.stop()


class ENGINE_OT_check(Attempt, bpy.types.Operator):
    """List what is wrong with the scene as a world"""
    bl_idname = "engine.check"
    bl_label = "Check"

    def work(self, context):
        folder = os.path.join(bpy.app.tempdir, "engine_check")
        findings.replace_by(programs.export_world(context.scene, folder))
        findings.check(folder)
        count = len(context.window_manager.engine_findings)
        self.report({"INFO"}, f"{count} finding{'' if count == 1 else 's'}")


class ENGINE_OT_export_world(Attempt, bpy.types.Operator):
    """Write the scene as a world into a folder: settings.atr, and the scene with its textures in data"""
    bl_idname = "engine.export_world"
    bl_label = "Export world"
    directory: StringProperty(subtype="DIR_PATH", description="Folder of the world")
    filter_folder: BoolProperty(default=True, options={"HIDDEN"})

    def invoke(self, context, _event):
        context.window_manager.fileselect_add(self)
        return {"RUNNING_MODAL"}

    def work(self, context):
        folder = os.path.abspath(bpy.path.abspath(self.directory))
        findings.replace_by(programs.export_world(context.scene, folder))
        self.report({"INFO"}, f"The world is in {folder}")


class PlayerChoice:
    """Stores a choice for one player as a property of the scene."""
    player: IntProperty(options={"HIDDEN"})

    def execute(self, context):
        context.scene[f"{self.key} {self.player}"] = int(self.value) if self.value.isdigit() else self.value
        return {"FINISHED"}


class ENGINE_OT_set_device(PlayerChoice, bpy.types.Operator):
    """Choose what the player is moved by"""
    bl_idname = "engine.set_device"
    bl_label = "Device"
    bl_options = {"REGISTER", "UNDO"}
    key = "PLAYERCONTROLLER"
    value: EnumProperty(name="Device", items=fields.DEVICES)


class ENGINE_OT_set_keys(PlayerChoice, bpy.types.Operator):
    """Choose the keys of a player at the keyboard"""
    bl_idname = "engine.set_keys"
    bl_label = "Keys"
    bl_options = {"REGISTER", "UNDO"}
    key = "PLAYERKEYBOARDCONTROLS"
    value: EnumProperty(name="Keys", items=fields.KEY_SETS)


CLASSES = (ENGINE_OT_play, ENGINE_OT_stop, ENGINE_OT_check, ENGINE_OT_export_world, ENGINE_OT_set_device,
           ENGINE_OT_set_keys)
register_classes, unregister_classes = bpy.utils.register_classes_factory(CLASSES)


def register():
    register_classes()
    keys = bpy.context.window_manager.keyconfigs.addon
    if keys:  # there are none without a display
        keymap = keys.keymaps.new(name="3D View", space_type="VIEW_3D")
        keymaps.append((keymap, keymap.keymap_items.new("engine.play", "F5", "PRESS")))


def unregister():
    for keymap, item in keymaps:
        keymap.keymap_items.remove(item)
    keymaps.clear()
    if bpy.app.timers.is_registered(tell_early_end):
        bpy.app.timers.unregister(tell_early_end)
    unregister_classes()
