# How world.glb was made:  blender -b --python start.py -- world.glb
# Afterwards the model is Blender's: open it with File, Import, glTF, and export it with "Custom Properties",
# "Cameras" and "Punctual Lights" on. Lengths are metres; a person is 1.8 high.

import math
import sys

import bpy

bpy.ops.wm.read_factory_settings(use_empty=True)


def link(name, data, location=(0, 0, 0)):
    thing = bpy.data.objects.new(name, data)
    thing.location = location
    bpy.context.scene.collection.objects.link(thing)
    return thing


def material(name, colour):
    made = bpy.data.materials.new(name)
    made.use_nodes = True
    made.use_backface_culling = True  # or each side would be exported with a back side
    shader = made.node_tree.nodes["Principled BSDF"]
    shader.inputs["Base Color"].default_value = (*colour, 1)
    shader.inputs["Roughness"].default_value = 1
    return made


def mesh(name, corners, sides, paint, location=(0, 0, 0)):
    data = bpy.data.meshes.new(name)
    data.from_pydata(corners, [], sides)
    data.materials.append(paint)
    return link(name, data, location)



def box(name, low, high, paint, origin=(0, 0, 0)):
    """A box whose sides are cut into cells of about a metre: light falls on vertices."""
    corners, sides = [], []

    def side(corner, u, v):
        columns, rows = (max(1, round(math.dist((0, 0, 0), edge))) for edge in (u, v))
        first = len(corners)
        for row in range(rows + 1):
            for column in range(columns + 1):
                corners.append([corner[i] + u[i] * column / columns + v[i] * row / rows - origin[i]
                                for i in range(3)])
        for row in range(rows):
            for column in range(columns):
                at = first + row * (columns + 1) + column
                sides.append((at, at + 1, at + columns + 2, at + columns + 1))

    x, y, z = (tuple(high[i] - low[i] if i == axis else 0 for i in range(3)) for axis in range(3))
    back = lambda edge: tuple(-part for part in edge)
    side((low[0], low[1], high[2]), x, y)
    side((low[0], high[1], low[2]), x, back(y))
    side(low, x, z)
    side((high[0], high[1], low[2]), back(x), z)
    side((high[0], low[1], low[2]), y, z)
    side((low[0], high[1], low[2]), back(y), z)
    return mesh(name, corners, sides, paint, origin)


# The room lies to the east of the origin, where the engine's twenty sprites hang.
stone = material("Stone", (0.5, 0.5, 0.52))
plaster = material("Plaster", (0.55, 0.48, 0.36))
wood = material("Wood", (0.45, 0.2, 0.05))
box("Floor", (4, -7, -0.2), (18, 7, 0), stone)
for name, low, high in (("NorthWall", (4, 7, 0), (18, 7.3, 3)), ("SouthWall", (4, -7.3, 0), (18, -7, 3)),
                        ("EastWall", (18, -7, 0), (18.3, 7, 3)), ("WestWall", (3.7, -7, 0), (4, 7, 3))):
    box(name, low, high, plaster)
mesh("Ramp", [(14, -1, 0), (16, -1, 0), (16, 3, 1.4), (14, 3, 1.4), (14, 3, 0), (16, 3, 0)],
     [(0, 1, 2, 3), (0, 3, 4), (1, 5, 2), (3, 2, 5, 4), (0, 4, 5, 1)], plaster)
box("Platform", (14, 3, 0), (16, 6, 1.4), plaster)

# A body's ellipsoid reaches 5 units, 0.91 metres, below its origin: the crate's origin lies above its top.
crate = box("Crate", (9, -0.4, 2), (9.8, 0.4, 2.8), wood, origin=(9.4, 0, 2.92))
crate["COLLIDER"] = True
crate["PHYSICS"] = "1 0.5 0.1"

lamp = bpy.data.lights.new("Lamp", "POINT")
lamp.energy = 100
lamp.color = (1, 0.85, 0.6)
link("Lamp", lamp, (11, 1.5, 2.6))
sun = bpy.data.lights.new("Sun", "SUN")
sun.energy = 1.5
link("Sun", sun, (11, 0, 6)).rotation_euler = (math.radians(35), math.radians(20), 0)

# The camera becomes the player's eyes, who stands below it.
link("Camera", bpy.data.cameras.new("Camera"), (11, -5, 1.55)).rotation_euler = (math.radians(90), 0, 0)

# Where the player starts: the middle of the body, 5.05 units above the floor. It also keeps the first look at the
# mouse, wherever that lies by then, from turning the view.
start = link("Start", None, (11, -5, 0.93))
start["PLAYERSPAWNPOINT"] = 0

bpy.ops.export_scene.gltf(filepath=sys.argv[sys.argv.index("--") + 1], export_format="GLB", export_extras=True,
                          export_cameras=True, export_lights=True, export_texcoords=False)
