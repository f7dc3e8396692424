"""What the importer and check_scene found wrong, as a list whose entries know their object."""

import json
import os
import re
import unicodedata

import bpy
from bpy.props import BoolProperty, CollectionProperty, IntProperty, StringProperty

from . import programs


class EngineFinding(bpy.types.PropertyGroup):
    text: StringProperty()
    is_error: BoolProperty()
    thing: StringProperty(name="Object")


def plain(name):
    """The letters and digits of a name, without accents: what the importer leaves of it."""
    return "".join(c for c in unicodedata.normalize("NFKD", name) if c.isascii() and c.isalnum())


def object_named(name):
    """Blender's object for one of the world, whose name may have a material's or a number after it."""
    if name in bpy.data.objects:
        return name
    sought = plain(name)
    fitting = [thing.name for thing in bpy.data.objects if plain(thing.name) and sought.startswith(plain(thing.name))]
    return max(fitting, key=lambda found: len(plain(found)), default="")


def block_at(path, line):
    """The name of the block in an attribute file that a line belongs to."""
    try:
        with open(path, encoding="latin-1") as text:
            lines = text.read().splitlines()[:line]
    except OSError:
        return ""
    heads = [head.group(1) for head in map(re.compile(r"\s*(\w+)\s*\{").match, lines) if head]
    return heads[-1] if heads else ""


def object_of(finding, folder):
    """The object that a finding of check_scene is about; an empty text if that isn't known."""
    name = finding.get("object")
    if not name:
        quoted = re.search(r'object "([^"]+)"', finding.get("text", ""))
        name = quoted.group(1) if quoted else ""
    path = os.path.join(folder, finding.get("file", ""))
    if not name and finding.get("line") and path.endswith(".atr") and os.path.basename(path) != "settings.atr":
        name = block_at(path, finding["line"])
    return object_named(name) if isinstance(name, str) and name and name != "GLOBALS" else ""


def add(text, is_error=False, thing=""):
    finding = bpy.context.window_manager.engine_findings.add()
    finding.text, finding.is_error, finding.thing = text, is_error, thing


def replace_by(warnings):
    """Begins the list anew, with the importer's warnings: what is wrong, a colon, names of objects."""
    bpy.context.window_manager.engine_findings.clear()
    for warning in warnings:
        about = warning.rpartition(": ")[2].split(", ")[0].split(" and ")[0]
        add(warning, thing=object_named(about) if about != warning else "")


def check(folder):
    """Adds what check_scene says of the world in the folder."""
    checked = programs.run("check_scene", "--json", folder)
    try:
        found = json.loads(checked.stdout)
        found = found.get("findings", []) if isinstance(found, dict) else found
    except ValueError as error:
        raise programs.Failure(checked.stderr.strip() or f"check_scene gave no JSON: {error}") from error
    for finding in found:
        add(finding.get("text", ""), finding.get("severity") == "error", object_of(finding, ""))


def select_object(manager, context):
    """Makes the object of the clicked finding the selected one."""
    if not 0 <= manager.engine_finding_index < len(manager.engine_findings):
        return
    thing = context.view_layer.objects.get(manager.engine_findings[manager.engine_finding_index].thing)
    if thing:
        for other in context.view_layer.objects:
            other.select_set(other == thing)
        context.view_layer.objects.active = thing


def register():
    bpy.utils.register_class(EngineFinding)
    bpy.types.WindowManager.engine_findings = CollectionProperty(type=EngineFinding)
    bpy.types.WindowManager.engine_finding_index = IntProperty(name="Finding", update=select_object,
                                                               description="A click selects the object")


def unregister():
    del bpy.types.WindowManager.engine_finding_index
    del bpy.types.WindowManager.engine_findings
    bpy.utils.unregister_class(EngineFinding)
