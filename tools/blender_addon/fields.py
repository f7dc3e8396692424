"""What the importer reads from custom properties, as fields with names, units and help.

A field keeps nothing itself: it reads and writes the plain custom property of the object or of the scene, so that
files made without this add-on work just as well.
"""

import math
import re

import bpy
from bpy.props import BoolProperty, EnumProperty, FloatProperty, IntProperty

FLAGS = {
    "COLLIDER": ("Body", "A body that collides when it moves: an ellipsoid 0.73 m wide and 1.8 m high about the "
                         "object's origin, whatever its mesh"),
    "NOCOLLIDER": ("Passable", "Bodies pass through this object"),
    "INVISIBLE": ("Invisible", "Not drawn, but still in the way of bodies"),
}
NUMBERS = {  # with the highest value; -1 removes the property
    "GROUPPARENT": ("Leads", 65535, "Its moves and its animation go on to the members of this group. -1: none"),
    "GROUPMEMBER": ("Follows", 65535, "It goes where the leader of this group goes. Children of a leader are members "
                                      "by themselves. -1: nobody"),
    "TRACK": ("Track", 999, "What its animation plays at: 0 while the player walks forward, 1 backward, 2 sideways. "
                            "-1: as the action's name says"),
}
PLAYER_KEYS = ("PLAYEROBJECT", "CAMERAOBJECT", "PLAYERSPAWNPOINT")
PHYSICS = (  # name, least, highest, help
    ("Gravity", -100, 100, "0 floats and is moved by no key; 1 falls by 0.1 units a frame faster in each frame, and a "
                           "metre is 5.5 units"),
    ("Bounce", 0, 1, "Share of the speed that comes back from what is hit: 0 stops there, 1 bounces for ever"),
    ("Friction", 0, 1, "Share of the speed lost in a frame with a contact: 0 slides, 1 sticks"),
)
BODY_PHYSICS = "1 0.5 0.1"
WALKER_PHYSICS = "1 0 0.5"
ROLES = (  # the first whose leading property is there is the object's role
    ("PLAYER", "Player", "What a player moves. An empty is best; its origin is the middle of the body",
     {"PLAYEROBJECT": 0, "COLLIDER": 1, "PHYSICS": WALKER_PHYSICS}),
    ("CAMERA", "Player's eyes", "Shows what the player sees. A camera that hangs on the player is this by itself",
     {"CAMERAOBJECT": 0}),
    ("START", "Player's start", "Where the player starts: an empty anywhere above the floor", {"PLAYERSPAWNPOINT": 0}),
    ("BODY", "Body", "Collides, falls and bounces", {"COLLIDER": 1, "PHYSICS": BODY_PHYSICS}),
    ("MEMBER", "Group member", "Follows the leader of its group", {"GROUPMEMBER": 0}),
    ("SCENERY", "Scenery", "Seen, and in everybody's way", {}),
)
ROLE_KEYS = {key for role in ROLES for key in role[3]}
DEVICES = (("0", "Keyboard", "The keys below"), ("1", "Mouse", "Looks by moving, walks with the left button"),
           ("2", "Joystick", "Looks and walks by its stick"))
KEY_SETS = (("37 39 33 34 38 40 188 190", "Arrow keys", "Arrows turn and walk, page up and down tilt, comma sidles"),
            ("65 68 82 70 87 83 81 69", "W A S D", "W and S walk, A and D turn, R and F tilt, Q sidles"))
FLAG_SETTINGS = ("FULLSCREEN", "SAFE")


def numbers_of(value):
    """All numbers of a property's value: one, those in a text, or those of a list, as the importer reads them."""
    if isinstance(value, str):
        return [float(number) for number in re.findall(r"-?\d*\.?\d+(?:[eE][-+]?\d+)?", value)]
    return [float(number) for number in value] if hasattr(value, "__len__") else [float(value)]


def text_of(numbers):
    """Without exponents, which the engine doesn't read."""
    return " ".join(f"{number:.7f}".rstrip("0").rstrip(".") for number in numbers)


def first_number(owner, key, otherwise):
    numbers = numbers_of(owner.get(key, otherwise))
    return int(numbers[0]) if numbers else otherwise


def is_set(owner, key):
    value = owner.get(key, 0)
    return value not in ("false", "False", "no") and (numbers_of(value) or [1])[0] != 0


def put(owner, key, value):
    """Stores a property; None removes it."""
    if value is None:
        owner.pop(key, None)
    else:
        owner[key] = value


def role_of(thing):
    """Its place in ROLES."""
    for index, (name, _, _, properties) in enumerate(ROLES):
        if name == "SCENERY" or next(iter(properties)) in thing or (name == "CAMERA" and thing.type == "CAMERA"):
            return index


def take_role(thing, index):
    for key in ROLE_KEYS:
        put(thing, key, None)
    for key, value in ROLES[index][3].items():
        put(thing, key, value)


def flag_field(key, name, text):
    return BoolProperty(name=name, description=text, get=lambda thing: is_set(thing, key),
                        set=lambda thing, value: put(thing, key, 1 if value else None))


def number_field(key, name, highest, text):
    return IntProperty(name=name, description=text, min=-1, max=highest, get=lambda thing: first_number(thing, key, -1),
                       set=lambda thing, value: put(thing, key, None if value < 0 else value))


def filled(owner, key, defaults):
    """The property's numbers, with the importer's own for what is left out."""
    numbers = numbers_of(owner.get(key, ""))[:len(defaults)]
    return [kind(number) for kind, number in zip(map(type, defaults), numbers + defaults[len(numbers):])]


def number_in_text_field(kind, key, index, defaults, **looks):
    def store(owner, value):
        numbers = filled(owner, key, defaults)
        numbers[index] = value
        put(owner, key, text_of(numbers))
    return kind(get=lambda owner: filled(owner, key, defaults)[index], set=store, **looks)


def player_field():
    def key_of(thing):
        return next((key for key in PLAYER_KEYS if key in thing), PLAYER_KEYS[0])
    return IntProperty(name="Of player", min=0, max=63,
                       description="Players count from 0: the first has the mouse, the second the keyboard, the "
                                   "third a joystick, unless the world's settings say otherwise",
                       get=lambda thing: first_number(thing, key_of(thing), 0),
                       set=lambda thing, value: put(thing, key_of(thing), value))


def reach_field():
    """In the importer a lamp of W watts lights a white wall fully at sqrt(W) / (2 pi) metres."""
    def store(light, value):
        light.energy = (2 * math.pi * value) ** 2
    return FloatProperty(name="Reach", description="At this distance a white wall is shown white, at twice it half as "
                         "bright. Where all lamps are too weak or too strong the importer adapts them together",
                         min=0, soft_max=50, unit="LENGTH", set=store,
                         get=lambda light: math.sqrt(max(light.energy, 0)) / (2 * math.pi))


def players_of(scene):
    """The numbers of the players that have an object, and 0: the importer always makes a first one."""
    return sorted({first_number(thing, "PLAYEROBJECT", 0) for thing in scene.objects if "PLAYEROBJECT" in thing} | {0})


def settings_of(scene):
    """Lines of the settings that the scene's properties ask for. `PLAYERCONTROLLER 1` is such a name, with 2 as its
    value."""
    lines = []
    for key, value in scene.items():
        if not re.fullmatch(r"[A-Z]{4,}( \d+)?", key) or key == "SPRITES" or hasattr(value, "keys"):
            continue
        if key in FLAG_SETTINGS:
            lines += [key] if is_set(scene, key) else []
        else:
            lines.append(f"{key} {value if isinstance(value, str) else text_of(numbers_of(value))}")
    return lines


def object_fields():
    roles = [(name, label, text, i) for i, (name, label, text, _) in enumerate(ROLES)]
    yield "role", EnumProperty(name="Role", items=roles, get=role_of, set=take_role,
                               description="What the object is in the world; sets the properties that this needs")
    yield "player", player_field()
    yield "falls", BoolProperty(name="Physics", description="Has a speed, falls, bounces and slides",
                                get=lambda thing: "PHYSICS" in thing,
                                set=lambda thing, on: put(thing, "PHYSICS", BODY_PHYSICS if on else None))
    for index, (name, least, highest, text) in enumerate(PHYSICS):
        yield name.lower(), number_in_text_field(FloatProperty, "PHYSICS", index, [1.0, 0.5, 0.5], name=name,
                                                 description=text, min=least, max=highest, soft_min=0, soft_max=1)
    for key, words in FLAGS.items():
        yield key.lower(), flag_field(key, *words)
    for key, words in NUMBERS.items():
        yield key.lower(), number_field(key, *words)


def all_fields():
    for name, field in object_fields():
        yield bpy.types.Object, name, field
    yield bpy.types.Light, "reach", reach_field()
    for index, name in enumerate(("Width", "Height")):
        yield bpy.types.Scene, name.lower(), number_in_text_field(
            IntProperty, "RESOLUTION", index, [800, 600, 32], name=name, description="Of the window, inside", min=64,
            max=16384, subtype="PIXEL")
    yield bpy.types.Scene, "fullscreen", flag_field("FULLSCREEN", "Full screen", "If the display has this resolution")
    yield bpy.types.Scene, "sprites", flag_field("SPRITES", "Sprites", "Shows the engine's twenty small sprites near "
                                                 "the world's origin, in the picture of the last textured object")


def register():
    for owner, name, field in all_fields():
        setattr(owner, "engine_" + name, field)


def unregister():
    for owner, name, _ in all_fields():
        delattr(owner, "engine_" + name)
