"""Makes worlds of the engine in Blender: the sidebar's tab "Engine" plays, checks and exports the open scene."""

bl_info = {
    "name": "Engine worlds",
    "author": "the Engine authors",
    "version": (1, 0, 0),
    "blender": (3, 4, 0),
    "location": "3D View > Sidebar > Engine, Add > Engine, F5",
    "description": "Play, check and export the scene as a world of the engine",
    "category": "Game Engine",
}

from . import additions, fields, findings, operators, panels  # noqa: E402

MODULES = (fields, findings, operators, additions, panels)


def register():
    for module in MODULES:
        module.register()


def unregister():
    for module in reversed(MODULES):
        module.unregister()
