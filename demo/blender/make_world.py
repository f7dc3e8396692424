# Builds the third demo world in Blender and exports it:
#   blender -b --python demo/blender/make_world.py -- demo/blender/world.glb [picture.png]
# With a second file it also renders what the camera sees. Lengths are metres; a person is 1.8 high.

import math
import random
import sys

import bpy

arguments = sys.argv[sys.argv.index("--") + 1:]
bpy.ops.wm.read_factory_settings(use_empty=True)
scene = bpy.context.scene
scene.render.fps = 25


def link(name, data, location=(0, 0, 0)):
    thing = bpy.data.objects.new(name, data)
    thing.location = location
    scene.collection.objects.link(thing)
    return thing


# Images

def image(name, width, height, colour_of):
    """An image within the file, from a function of a pixel's place; the lower left corner is (0, 0)."""
    picture = bpy.data.images.new(name, width, height)
    pixels = []
    for y in range(height):
        for x in range(width):
            pixels += [*colour_of(x, y), 1.0]
    picture.pixels = pixels
    picture.pack()
    return picture


random.seed(7)
noise = [[random.random() for _ in range(256)] for _ in range(256)]


def bricks(x, y):
    row = y // 16
    joint = y % 16 < 2 or (x + row % 2 * 16) % 32 < 2
    shade = 0.85 + 0.15 * noise[row][(x + row % 2 * 16) // 32 % 8] + 0.06 * noise[y][x]
    return (0.62, 0.60, 0.56) if joint else (0.62 * shade, 0.33 * shade, 0.25 * shade)


def planks(x, y):
    plank = x // 25
    shade = 0.75 + 0.2 * noise[plank][3] + 0.12 * noise[y // 9][x]
    edge = 0.5 if x % 25 < 2 else 1.0
    return (0.52 * shade * edge, 0.36 * shade * edge, 0.2 * shade * edge)


def grass(x, y):
    shade = 0.8 + 0.2 * noise[y][x]
    return (0.33 * shade, 0.46 * shade, 0.2 * shade)


def arrow(x, y):
    """Points up, so that a picture upside down or from behind would show."""
    inside = (y < 40 and abs(x - 32) < 8) or (y >= 40 and abs(x - 32) < (64 - y) * 1.1)
    return (0.9, 0.75, 0.15) if inside else (0.15, 0.25, 0.5)


# Materials. Without "Backface Culling" each wall would be exported with a back side.

def material(name, colour=(1, 1, 1), picture=None, vertex_colours=None):
    made = bpy.data.materials.new(name)
    made.use_nodes = True
    made.use_backface_culling = True
    nodes = made.node_tree.nodes
    shader = nodes["Principled BSDF"]
    shader.inputs["Base Color"].default_value = (*colour, 1)
    shader.inputs["Roughness"].default_value = 1
    shader.inputs["Specular"].default_value = 0
    if picture:
        texture = nodes.new("ShaderNodeTexImage")
        texture.image = picture
        made.node_tree.links.new(texture.outputs["Color"], shader.inputs["Base Color"])
    if vertex_colours:
        colours = nodes.new("ShaderNodeVertexColor")
        colours.layer_name = vertex_colours
        made.node_tree.links.new(colours.outputs["Color"], shader.inputs["Base Color"])
    return made


brick = material("Brick", picture=image("Bricks", 128, 128, bricks))
plank = material("Plank", picture=image("Planks", 100, 72, planks))
lawn = material("Lawn", picture=image("Grass", 64, 64, grass))
sign = material("Sign", picture=image("Arrow", 64, 64, arrow))
plaster = material("Plaster", (0.75, 0.72, 0.65))
red = material("Red", (0.6, 0.08, 0.06))
painted = material("Painted", vertex_colours="Paint")


# Meshes

def box(name, low, high, stuff, step=None, metres=1.0, origin=(0, 0, 0)):
    """A closed box whose texture repeats every so many metres. Large sides are cut up into steps, as light
    falls on vertices."""
    vertices, faces, coordinates = [], [], []
    for axis in range(3):
        u, v = (axis + 1) % 3, (axis + 2) % 3
        for side in (low, high):
            counts = [max(1, math.ceil((high[a] - low[a]) / step)) if step else 1 for a in (u, v)]
            first = len(vertices)
            for j in range(counts[1] + 1):
                for i in range(counts[0] + 1):
                    point = [0, 0, 0]
                    point[axis] = side[axis]
                    point[u] = low[u] + (high[u] - low[u]) * i / counts[0]
                    point[v] = low[v] + (high[v] - low[v]) * j / counts[1]
                    vertices.append([point[a] - origin[a] for a in range(3)])
                    across, up = (point[v], point[u]) if axis == 1 else (point[u], point[v])
                    coordinates.append((across / metres, up / metres))
            for j in range(counts[1]):
                for i in range(counts[0]):
                    a = first + j * (counts[0] + 1) + i
                    corners = [a, a + 1, a + counts[0] + 2, a + counts[0] + 1]
                    faces.append(corners if side is high else corners[::-1])
    mesh = bpy.data.meshes.new(name)
    mesh.from_pydata(vertices, [], faces)
    layer = mesh.uv_layers.new()
    for loop in mesh.loops:
        layer.data[loop.index].uv = coordinates[loop.vertex_index]
    mesh.materials.append(stuff)
    return link(name, mesh, origin)


box("Ground", (-16, -16, -0.5), (16, 16, 0), lawn, step=1.5, metres=3)

# A house of one room. The door is in the south wall.
box("House floor", (-4, 0, -0.4), (4, 6, 0.05), plank, step=1, metres=1)
for name, low, high in (("House west", (-4.3, 0, 0), (-4, 6, 3)), ("House east", (4, 0, 0), (4.3, 6, 3)),
                        ("House north", (-4.3, 6, 0), (4.3, 6.3, 3)),
                        ("House south-1", (-4.3, -0.3, 0), (-0.7, 0, 3)),
                        ("House south-2", (0.7, -0.3, 0), (4.3, 0, 3)),
                        ("House lintel", (-0.7, -0.3, 2.3), (0.7, 0, 3))):
    box(name, low, high, brick, step=0.75, metres=2)
box("House roof", (-4.6, -0.6, 3), (4.6, 6.6, 3.2), plaster, step=1)

# The door turns about its hinge while the second player walks: up arrow.
door = box("Door", (-0.7, -0.2, 0.05), (0.7, -0.1, 2.3), plank, metres=1.2, origin=(-0.7, -0.15, 0))
porter = link("Porter", None, (0, 3, 8))
porter["PLAYEROBJECT"] = 1
porter["GROUPPARENT"] = 1
porter["COLLIDER"] = True
porter["NOCOLLIDER"] = True
porter["PHYSICS"] = "0 0 0"
door["GROUPMEMBER"] = 1
for frame, turn in ((1, 0), (26, 100), (101, 100), (126, 0)):
    door.rotation_euler.z = math.radians(turn)
    door.keyframe_insert("rotation_euler", frame=frame)
door.animation_data.action.name = "Door forward"
scene.frame_end = 126
scene.frame_set(1)

# A ramp and the terrace that it leads to.
ramp = bpy.data.meshes.new("Ramp")
ramp.from_pydata([(6, -6, 0), (9, -6, 0), (9, 0, 2), (6, 0, 2), (6, 0, 0), (9, 0, 0)], [],
                 [(0, 1, 2, 3), (0, 3, 4), (1, 5, 2), (3, 2, 5, 4), (0, 4, 5, 1)])
layer = ramp.uv_layers.new()
for polygon in ramp.polygons:
    for loop in polygon.loop_indices:
        x, y, z = ramp.vertices[ramp.loops[loop].vertex_index].co
        layer.data[loop].uv = (y / 2, z / 2) if abs(polygon.normal.x) > 0.5 else (x / 2, (y + z) / 2)
ramp.materials.append(brick)
link("Ramp", ramp)
box("Terrace", (6, 0, 0), (10, 5, 2), brick, step=0.5, metres=2)

# A crate that falls, with a picture on it that shows which way is up. Its origin, the middle
# of its body, lies 5 units above its lowest point: 0.91 m.
crate = box("Crate.001", (-5.5, -5.5, 3), (-4.7, -4.7, 3.8), sign, metres=0.8, origin=(-5.1, -5.1, 3.91))
crate["COLLIDER"] = True
crate["PHYSICS"] = [1.0, 0.5, 0.1]

# Heads: one mesh, one instance in a mirror, one stretched. Two materials: an ear is red.
bpy.ops.mesh.primitive_monkey_add()
head = bpy.context.object
head.name = "Head"
head.location = (-8, 2, 1)
head.data.materials.append(plaster)
head.data.materials.append(red)
for polygon in head.data.polygons:
    polygon.use_smooth = True
    polygon.material_index = 1 if polygon.center.x > 0.86 else 0
mirrored = link("Head mirrored", head.data, (-11, 2, 1))
mirrored.scale = (-1, 1, 1)
stretched = link("Head stretched", head.data, (-14, 2, 1.6))
stretched.scale = (0.8, 0.8, 1.6)
stretched.rotation_euler.z = math.radians(40)

# A ball with a colour at each corner.
bpy.ops.mesh.primitive_uv_sphere_add(segments=24, ring_count=12, radius=0.9, location=(3.5, -5, 0.9))
ball = bpy.context.object
ball.name = "Ball"
paint = ball.data.color_attributes.new("Paint", "FLOAT_COLOR", "POINT")
for vertex in ball.data.vertices:
    x, y, z = vertex.co
    paint.data[vertex.index].color = (0.5 + x / 2, 0.5 + y / 2, 0.5 + z / 2, 1)
for polygon in ball.data.polygons:
    polygon.use_smooth = True
ball.data.materials.append(painted)


# Lamps

def lamp(name, kind, location, energy, colour=(1, 1, 1)):
    data = bpy.data.lights.new(name, kind)
    data.energy = energy
    data.color = colour
    return link(name, data, location)


sun = lamp("Sun", "SUN", (0, 0, 20), 2.2, (1, 0.95, 0.85))
sun.rotation_euler = (math.radians(40), math.radians(20), 0)
lamp("Lamp", "POINT", (0, 3, 2.6), 180, (1, 0.8, 0.55))
spot = lamp("Spot", "SPOT", (8, 2.5, 6), 900, (0.6, 0.75, 1))
spot.data.spot_size = math.radians(50)

# The player: the empty is the middle of its body, and the camera hangs on it at the height of eyes.
hero = link("Hero", None, (1, -10, 1))
hero["PLAYEROBJECT"] = 0
hero["COLLIDER"] = True
hero["PHYSICS"] = "1 0 0.5"
camera = bpy.data.cameras.new("Eyes")
camera.sensor_fit = "VERTICAL"
camera.angle_y = math.radians(60)
eyes = link("Eyes", camera, (0, 0, 0.55))
eyes.parent = hero
eyes.rotation_euler = (math.radians(90), 0, 0)
start = link("Start", None, (0, -10, 0.2))
start["PLAYERSPAWNPOINT"] = 0

bpy.ops.export_scene.gltf(filepath=arguments[0], export_format="GLB", export_extras=True, export_cameras=True,
                          export_lights=True, export_yup=True, export_image_format="AUTO")

if len(arguments) > 1:
    # As the player sees it at the start.
    hero.location = (0, -10, 0.93)
    crate.location.z = 0.4
    scene.camera = eyes
    scene.render.engine = "CYCLES"
    scene.cycles.samples = 48
    scene.cycles.use_denoising = False
    scene.view_settings.view_transform = "Standard"
    scene.world = bpy.data.worlds.new("World")
    scene.world.color = (0.05, 0.05, 0.05)
    scene.render.resolution_x = 800
    scene.render.resolution_y = 600
    scene.render.filepath = arguments[1]
    bpy.ops.render.render(write_still=True)
