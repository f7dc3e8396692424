"""Runs the programs beside Blender: exports the scene, makes a world of it, checks it, starts the engine on it."""

import os
import re
import shutil
import subprocess

import bpy

from . import fields

EXPORT = {"export_format": "GLB", "export_extras": True, "export_cameras": True, "export_lights": True,
          "export_yup": True, "export_apply": True, "use_active_scene": True}
LONGEST = 600  # seconds that a program other than the engine may take

engine = None  # the process that was started last
window = None  # what the settings say of its window


class Failure(Exception):
    """Text for the user."""


def preferences():
    addon = bpy.context.preferences.addons.get(__package__)
    return addon.preferences if addon else None


def find(name):
    """The path of a program: in the folder of the preferences, as installed or built beside this file, or in PATH."""
    here = os.path.dirname(os.path.realpath(__file__))
    chosen = bpy.path.abspath(preferences().programs) if preferences() and preferences().programs else None
    builds = os.path.join(here, "..", "..", "build", "release")
    installed = os.path.join(here, *[".."] * 5, "bin")  # from share/blender/scripts/addons
    for folder in filter(None, (chosen, chosen and os.path.join(chosen, "tools"), builds,
                                os.path.join(builds, "tools"), installed)):
        path = shutil.which(name, path=folder)
        if path:
            return os.path.realpath(path)
    path = shutil.which(name)
    if not path:
        raise Failure(f"There is no program {name}. Install the engine, or name the folder of its programs in the "
                      "preferences of this add-on")
    return path


def run(name, *arguments):
    """Gives a finished run with its output as text."""
    try:
        return subprocess.run([find(name), *arguments], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              encoding="utf-8", errors="replace", timeout=LONGEST)
    except (OSError, subprocess.TimeoutExpired) as error:
        raise Failure(str(error)) from error


def export_model(path):
    """Writes the open scene as glTF. Older and newer exporters know different options."""
    try:
        known = bpy.ops.export_scene.gltf.get_rna_type().properties.keys()
        bpy.ops.export_scene.gltf(filepath=path, **{key: EXPORT[key] for key in EXPORT if key in known})
    except (AttributeError, KeyError, RuntimeError) as error:
        reason = str(error).strip().splitlines()[-1]
        hint = ": install python3-numpy" if "numpy" in reason else ", by its add-on glTF 2.0"
        raise Failure(f"Blender can't export glTF{hint} ({reason})") from error


def export_world(scene, folder):
    """Makes the scene a world that the engine starts in this folder. Gives the importer's warnings."""
    os.makedirs(os.path.join(folder, "data"), exist_ok=True)
    model = os.path.join(bpy.app.tempdir, "scene.glb")
    export_model(model)
    arguments = [model, os.path.join(folder, "data", "world"), "--settings"]
    for line in fields.settings_of(scene):
        arguments += ["--set", line]
    if "FRAMERATELIMIT" in scene:  # animations play a key a frame
        arguments += ["--fps", str(fields.first_number(scene, "FRAMERATELIMIT", 50))]
    if fields.is_set(scene, "SPRITES"):
        arguments.append("--sprites")
    imported = run("import_scene", *arguments)
    if imported.returncode != 0:
        raise Failure(imported.stderr.strip() or f"import_scene ended with {imported.returncode}")
    return re.findall(r": warning: (.*)", imported.stderr)


def is_running():
    return engine is not None and engine.poll() is None


def stop():
    if is_running():
        engine.terminate()
        try:
            engine.wait(5)
        except subprocess.TimeoutExpired:
            engine.kill()
            engine.wait()


def play(folder):
    """Shows the world of the folder. A running engine that watches its files has seen that they are new, but its
    window stays as it was."""
    global engine, window
    with open(os.path.join(folder, "settings.atr"), encoding="latin-1") as text:
        wanted = re.findall(r"\*(?:RESOLUTION|FULLSCREEN|FONT)\b.*", text.read())
    watches = "--watch" in run("engine", "--help").stdout
    if is_running() and watches and window == wanted:
        return
    stop()
    window = wanted
    try:
        engine = subprocess.Popen([find("engine"), folder, *(["--watch"] if watches else [])],
                                  stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    except OSError as error:
        raise Failure(str(error)) from error


def early_end(folder):
    """What is to be said if the engine has ended by itself, without ending its log in order; else nothing."""
    if engine is None or is_running():
        return None
    log = os.path.join(folder, "defaultlog.txt")
    try:
        with open(log, encoding="utf-8", errors="replace") as text:
            return None if "Logging ended" in text.read() else f"The engine ended early; its log is {log}"
    except OSError:
        return f"The engine ended at once, with code {engine.returncode}"
