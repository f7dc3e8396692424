"""The tab "Engine" in the 3D view's sidebar, and the add-on's preferences."""

import textwrap

import bpy
from bpy.props import StringProperty

from . import fields, programs


class EnginePreferences(bpy.types.AddonPreferences):
    bl_idname = __package__
    programs: StringProperty(name="Folder of the programs", subtype="DIR_PATH",
                             description="Where engine, import_scene and check_scene are, such as a build folder; "
                                         "empty: wherever the engine is installed")

    def draw(self, _context):
        self.layout.prop(self, "programs")
        try:
            self.layout.label(text="Found: " + programs.find("engine"), icon="CHECKMARK")
        except programs.Failure as failure:
            self.layout.label(text=str(failure), icon="ERROR")


class ENGINE_UL_findings(bpy.types.UIList):
    def draw_item(self, _context, layout, _data, item, _icon, _active_data, _active_property):
        layout.label(text=f"{item.thing}: {item.text}" if item.thing else item.text,
                     icon="ERROR" if item.is_error else "INFO")


class EnginePanel:
    bl_space_type = "VIEW_3D"
    bl_region_type = "UI"
    bl_category = "Engine"


class ENGINE_PT_world(EnginePanel, bpy.types.Panel):
    bl_label = "Play"

    def draw(self, context):
        layout = self.layout
        row = layout.row(align=True)
        row.scale_y = 1.5
        if programs.is_running():
            row.operator("engine.play", text="Play what is new", icon="FILE_REFRESH")
            row.operator("engine.stop", text="", icon="SNAP_FACE")
        else:
            row.operator("engine.play", text="Play (F5)", icon="PLAY")
        layout.operator("engine.check", icon="CHECKMARK")
        layout.operator("engine.export_world", icon="EXPORT")
        manager = context.window_manager
        if not manager.engine_findings:
            return
        layout.template_list("ENGINE_UL_findings", "", manager, "engine_findings", manager, "engine_finding_index")
        if 0 <= manager.engine_finding_index < len(manager.engine_findings):
            column = layout.column(align=True)
            column.scale_y = 0.7
            letters = max(20, int(context.region.width / (9 * context.preferences.system.ui_scale)))
            for line in textwrap.wrap(manager.engine_findings[manager.engine_finding_index].text, letters):
                column.label(text=line)


class ENGINE_PT_object(EnginePanel, bpy.types.Panel):
    bl_label = "Object"

    @classmethod
    def poll(cls, context):
        return context.object is not None

    def draw(self, context):
        layout = self.layout
        layout.use_property_split = True
        layout.use_property_decorate = False
        thing = context.object
        if thing.type == "LIGHT":
            if thing.data.type in ("POINT", "SPOT"):
                layout.prop(thing.data, "engine_reach")
            layout.prop(thing.data, "energy")
            layout.prop(thing.data, "color")
            return
        layout.prop(thing, "engine_role")
        if any(key in thing for key in fields.PLAYER_KEYS):
            layout.prop(thing, "engine_player")
        for key in fields.FLAGS:
            layout.prop(thing, "engine_" + key.lower())
        layout.prop(thing, "engine_falls")
        if thing.engine_falls:
            for name, *_ in fields.PHYSICS:
                layout.prop(thing, "engine_" + name.lower())
        for key in fields.NUMBERS:
            if key != "TRACK" or thing.animation_data or key in thing:
                layout.prop(thing, "engine_" + key.lower())


def choice(layout, operator, items, value, player):
    """A menu that shows what is chosen."""
    shown = next((label for name, label, _ in items if name == value), value)
    layout.operator_menu_enum(operator, "value", text=shown).player = player


class ENGINE_PT_settings(EnginePanel, bpy.types.Panel):
    bl_label = "World"
    bl_options = {"DEFAULT_CLOSED"}

    def draw(self, context):
        layout = self.layout
        layout.use_property_split = True
        layout.use_property_decorate = False
        scene = context.scene
        for name in ("width", "height", "fullscreen", "sprites"):
            layout.prop(scene, "engine_" + name)
        for place, player in enumerate(fields.players_of(scene)):
            device = fields.first_number(scene, f"PLAYERCONTROLLER {player}", (1, 0, 2, 3)[min(player, 3)])
            keys = str(scene.get(f"PLAYERKEYBOARDCONTROLS {player}", fields.KEY_SETS[0][0]))
            column = layout.column(align=True)
            column.label(text=f"Player {player}")
            choice(column, "engine.set_device", fields.DEVICES, str(device), player)
            if device == 0:
                choice(column, "engine.set_keys", fields.KEY_SETS, keys, player)


CLASSES = (EnginePreferences, ENGINE_UL_findings, ENGINE_PT_world, ENGINE_PT_object, ENGINE_PT_settings)
register, unregister = bpy.utils.register_classes_factory(CLASSES)
