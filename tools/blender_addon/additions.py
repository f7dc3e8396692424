"""Entries of the Add menu: what a world needs besides meshes, complete with its properties."""

import math

import bpy

from . import fields

WALL = 0.2  # metres
DOORWAY = (1.0, 2.1)
ROOM = (8.0, 6.0, 2.8)
PORCH = 3.0  # how far a room's floor reaches out before its door
EYE_HEIGHT = 0.55  # above the middle of a body
BODY_MIDDLE = 0.95  # above the ground, with a little air


def boxes_mesh(name, colour, boxes, step=None):
    """A mesh of closed boxes, each given by its low and high corner. With a step, sides are cut up into cells of at
    most that size, as light falls on vertices."""
    vertices, faces = [], []
    for low, high in boxes:
        for axis in range(3):
            u, v = (axis + 1) % 3, (axis + 2) % 3
            columns, rows = (max(1, math.ceil((high[i] - low[i]) / step)) if step else 1 for i in (u, v))
            for side in (low, high):
                first = len(vertices)
                for j in range(rows + 1):
                    for i in range(columns + 1):
                        point = [0.0] * 3
                        point[axis] = side[axis]
                        point[u] = low[u] + (high[u] - low[u]) * i / columns
                        point[v] = low[v] + (high[v] - low[v]) * j / rows
                        vertices.append(point)
                for cell in range(columns * rows):
                    a = first + cell // columns * (columns + 1) + cell % columns
                    corners = [a, a + 1, a + columns + 2, a + columns + 1]
                    faces.append(corners if side is high else corners[::-1])
    mesh = bpy.data.meshes.new(name)
    mesh.from_pydata(vertices, [], faces)
    material = bpy.data.materials.new(name)
    material.use_nodes = True
    material.use_backface_culling = True
    material.diffuse_color = (*colour, 1)
    material.node_tree.nodes["Principled BSDF"].inputs["Base Color"].default_value = (*colour, 1)
    mesh.materials.append(material)
    return mesh


def add_object(context, name, data=None, offset=(0, 0, 0), parent=None, properties=()):
    """At the cursor, or at its parent."""
    thing = bpy.data.objects.new(name, data)
    origin = (0, 0, 0) if parent else context.scene.cursor.location
    thing.location = [a + b for a, b in zip(origin, offset)]
    thing.parent = parent
    for key, value in dict(properties).items():
        thing[key] = value
    context.collection.objects.link(thing)
    select(context, thing)
    return thing


def select(context, thing):
    for other in context.view_layer.objects:
        other.select_set(other == thing)
    context.view_layer.objects.active = thing


def free_number(scene, keys, least=0):
    taken = {fields.first_number(thing, key, -1) for thing in scene.objects for key in keys if key in thing}
    return next(number for number in range(least, least + len(taken) + 1) if number not in taken)


def add_player(context):
    """The start carries the player, so that both are moved and turned as one."""
    number = free_number(context.scene, ["PLAYEROBJECT"])
    start = add_object(context, "Start", properties={"PLAYERSPAWNPOINT": number})
    body = add_object(context, "Player", None, (0, 0, BODY_MIDDLE), start,
                      {"PLAYEROBJECT": number, "COLLIDER": 1, "PHYSICS": fields.WALKER_PHYSICS})
    camera = bpy.data.cameras.new("Eyes")
    camera.sensor_fit = "VERTICAL"
    camera.angle_y = math.radians(60)
    eyes = add_object(context, "Eyes", camera, (0, 0, EYE_HEIGHT), body)
    eyes.rotation_euler.x = math.radians(90)
    select(context, start)


def add_door(context):
    """A door is moved by a player of its own, who sees nothing and whose way is the door's track."""
    width, height = DOORWAY
    player = free_number(context.scene, ["PLAYEROBJECT"], least=1)
    group = free_number(context.scene, ["GROUPPARENT", "GROUPMEMBER"], least=1)
    porter = add_object(context, "Porter", None, (-width / 2, 0, BODY_MIDDLE), None,
                        {"PLAYEROBJECT": player, "GROUPPARENT": group, "COLLIDER": 1, "NOCOLLIDER": 1,
                         "PHYSICS": "0 0 0"})
    porter.empty_display_size = 0.3
    mesh = boxes_mesh("Door", (0.35, 0.2, 0.1), [((0.02, 0, 0.02), (width - 0.02, 0.06, height - 0.02))], 0.5)
    door = add_object(context, "Door", mesh, (-width / 2, 0, 0), None, {"GROUPMEMBER": group})
    second = context.scene.render.fps
    for frame, turn in ((0, 0), (second, 100), (4 * second, 100), (5 * second, 0)):
        door.rotation_euler.z = math.radians(turn)
        door.keyframe_insert("rotation_euler", frame=1 + frame)
    door.rotation_euler.z = 0
    door.animation_data.action.name = "Door forward"


def add_lamp(context):
    lamp = bpy.data.lights.new("Lamp", "POINT")
    lamp.engine_reach = 2.0
    add_object(context, "Lamp", lamp, (0, 0, 2.4))


def add_room(context):
    """Its doorway is at the cursor, where a door fits in; one sees the room from there in the direction of y."""
    (width, depth, height), (gap, top) = ROOM, DOORWAY
    x, far = width / 2, depth + WALL
    boxes = [((-x - WALL, -PORCH, -WALL), (x + WALL, far + WALL, 0)),
             ((-x - WALL, 0, height), (x + WALL, far + WALL, height + WALL)),
             ((-x - WALL, 0, 0), (-x, far + WALL, height)), ((x, 0, 0), (x + WALL, far + WALL, height)),
             ((-x, far, 0), (x, far + WALL, height)),
             ((-x, 0, 0), (-gap / 2, WALL, height)), ((gap / 2, 0, 0), (x, WALL, height)),
             ((-gap / 2, 0, top), (gap / 2, WALL, height))]
    add_object(context, "Room", boxes_mesh("Room", (0.6, 0.57, 0.5), boxes, 0.7))


ADDITIONS = {
    "player": ("Player with camera and body", "OUTLINER_OB_CAMERA", add_player),
    "door": ("Door with hinge and track", "DRIVER_ROTATIONAL_DIFFERENCE", add_door),
    "lamp": ("Lamp", "LIGHT_POINT", add_lamp),
    "room": ("Room", "CUBE", add_room),
}


class ENGINE_OT_add(bpy.types.Operator):
    """Add something that a world of the engine needs, at the 3D cursor"""
    bl_idname = "engine.add"
    bl_label = "Add to the world"
    bl_options = {"REGISTER", "UNDO"}
    kind: bpy.props.EnumProperty(items=[(kind, name, "") for kind, (name, _, _) in ADDITIONS.items()])

    def execute(self, context):
        ADDITIONS[self.kind][2](context)
        return {"FINISHED"}


class VIEW3D_MT_engine_add(bpy.types.Menu):
    bl_label = "Engine"

    def draw(self, _context):
        for kind, (name, icon, _) in ADDITIONS.items():
            self.layout.operator("engine.add", text=name, icon=icon).kind = kind


def draw_entry(menu, _context):
    menu.layout.menu("VIEW3D_MT_engine_add", icon="WORLD")


def register():
    bpy.utils.register_class(ENGINE_OT_add)
    bpy.utils.register_class(VIEW3D_MT_engine_add)
    bpy.types.VIEW3D_MT_add.append(draw_entry)


def unregister():
    bpy.types.VIEW3D_MT_add.remove(draw_entry)
    bpy.utils.unregister_class(VIEW3D_MT_engine_add)
    bpy.utils.unregister_class(ENGINE_OT_add)
