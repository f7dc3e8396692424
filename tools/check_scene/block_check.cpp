#include <algorithm>
#include <unordered_map>

#include "check_scene/checks.h"
#include "check_scene/key_check.h"
#include "common/spelling.h"
#include "scene/scene.h"

// Blocks of attribute files: who is given which, and why one is given to nobody.

namespace {

using Names = std::unordered_map<std::string, std::int32_t>;

/// One attribute file while its blocks are judged.
struct BlockCheck {
    Findings& findings;
    const World& world;
    const SceneSource& source;
    const Names& ids;  ///< of the objects of this scene
    int suggestions = 0;

    Place At(std::size_t position) const { return source.attributes.At(position); }
    const Object& ObjectOf(std::int32_t id) const { return world.scene->objects[id]; }
    std::string LineOf(std::size_t position) const {
        return std::to_string(source.attributes.LineOf(position));
    }

    void CheckUntaken(const Block& block);
    void CheckTakers(const Block& block);
    void CheckClosing(const Block& block);
    void CheckStrayKeys();
};

bool IsName(const std::string& head, const Names& ids) {
    return head == "GLOBALS" || ids.contains(head);
}

/// A block that nobody is given: why?
void BlockCheck::CheckUntaken(const Block& block) {
    const std::string& text = source.attributes.text;
    const std::string name = "the block " + block.head;
    const std::size_t headEnd = block.headBegin + block.head.size();
    const std::string gap = text.substr(headEnd, block.brace - headEnd);
    if (!IsName(block.head, ids)) {
        if (block.depth > 0) {
            return;  // braces may nest
        }
        constexpr int mostSuggestions = 20;
        std::vector<std::string> names{"GLOBALS"};
        if (suggestions++ < mostSuggestions) {  // each of them looks at all names
            for (const auto& [other, id] : ids) {
                names.push_back(other);
            }
        }
        if (block.head.empty()) {
            findings.Error("block-nameless", At(block.brace),
                           "a block without a name: nothing in it is read");
        } else {
            findings.Error("block-unmatched", At(block.headBegin),
                           name + " fits no object of " + source.shownName + ": nothing in it is read" +
                               DidYouMean(block.head, names));
        }
        return;
    }
    if (gap.find_first_not_of(" \n") != std::string::npos) {
        findings.Error("block-name-apart", At(block.headBegin),
                       name +
                           " isn't found: only blanks and line ends may stand between "
                           "the name and its brace, no tab");
        return;
    }
    std::size_t before = block.headBegin;
    while (before > 0 && (text[before - 1] == ' ' || text[before - 1] == '\n')) {
        before--;
    }
    if (before >= block.head.size() &&
        text.compare(before - block.head.size(), block.head.size(), block.head) == 0) {
        findings.Error("block-name-twice", At(block.headBegin),
                       name + " isn't found: its name stands twice in front of the brace; take one out");
        return;
    }
    const std::int32_t taken =
        block.head == "GLOBALS" ? source.globals : world.Of(ids.at(block.head)).block;
    if (taken == -1) {
        findings.Error("block-hidden", At(block.headBegin),
                       name +
                           " isn't found, because of the characters before its name; "
                           "put its name at the start of a line");
        return;
    }
    const Block& first = source.blocks[static_cast<std::size_t>(taken)];
    if (first.head == block.head) {
        findings.Error("block-repeated", At(block.headBegin),
                       name + " stands here a second time and isn't read: the one in line " +
                           LineOf(first.headBegin) + " counts");
    } else {
        findings.Error("block-tail-taken", At(block.headBegin),
                       name + " isn't read: the first place that ends in this name counts, which is " +
                           first.head + " in line " + LineOf(first.headBegin) +
                           "; choose names of which none is the tail of another");
    }
}

/// A block whose name only ends in the object's name.
void BlockCheck::CheckTakers(const Block& block) {
    for (const std::int32_t id : block.takers) {
        const std::string& name = ObjectOf(id).name;
        const bool isOwn = block.head == name || name.find(' ') != std::string::npos;
        if (isOwn) {
            continue;
        }
        if (block.head.size() > name.size()) {
            findings.Error("block-of-longer-name", At(block.headBegin),
                           Named(ObjectOf(id)) + " is given the block " + block.head +
                               ", which ends in its name; choose names of which none is "
                               "the tail of another");
        }
    }
}

/// A block that ends too late or not at all.
void BlockCheck::CheckClosing(const Block& block) {
    const auto after = std::ranges::upper_bound(source.blocks, block.brace, {}, &Block::brace);
    for (auto inner = after; inner != source.blocks.end() && inner->brace < block.end; inner++) {
        if (IsName(inner->head, ids)) {
            findings.Cause("block-runs-on", At(block.headBegin),
                           "the block " + block.head + " has no closing brace before " + inner->head +
                               " begins in line " + LineOf(inner->headBegin) +
                               ", so that everything in that counts for both");
            return;
        }
    }
    if (!block.isClosed) {
        findings.Error("block-unclosed", At(block.headBegin),
                       "the block " + block.head + ", which begins here, has no closing brace");
    }
}

/// Keys that stand outside of all blocks.
void BlockCheck::CheckStrayKeys() {
    std::size_t from = 0;
    const auto check = [&](std::size_t begin, std::size_t end) {
        for (const KeyUse& use : FindKeyUses(source.attributes, begin, end, KeyPlace::Object)) {
            const bool isKey = use.key != nullptr || use.word == "*LIGHT" || use.word == "*TEXTURE";
            if (isKey && !source.attributes.IsInComment(use.position)) {
                findings.Error("key-outside-block", At(use.position),
                               use.word + " stands outside of all blocks and isn't read");
            }
        }
    };
    for (const Block& block : source.blocks) {
        if (block.depth == 0) {
            check(from, block.headBegin);
            from = block.end;
        }
    }
    check(from, source.attributes.text.size());
}

void CheckNames(Findings& findings, const World& world, const SceneSource& source, const Names& ids) {
    for (std::int32_t id = source.firstObject; id < source.objectEnd; id++) {
        const ObjectSource& object = world.Of(id);
        const std::string& name = world.scene->objects[id].name;
        if (!object.hasRecord) {
            continue;
        }
        if (name.empty()) {
            findings.Warn("object-nameless", world.At(id),
                          "an object without a name can't have attributes");
        } else if (std::ranges::any_of(name, [](char c) { return static_cast<unsigned char>(c) > 127; })) {
            findings.Error("object-name-letters", world.At(id),
                           Named(world.scene->objects[id]) +
                               ": names with letters beyond ASCII never find their block");
        } else if (name.find_first_of("{}\t") != std::string::npos) {
            findings.Error(
                "object-name-characters", world.At(id),
                Named(world.scene->objects[id]) + ": a name with braces or tabs never finds its block");
        } else if (name != object.head.name && object.block == -1 && ids.contains(object.head.name) &&
                   world.Of(ids.at(object.head.name)).block != -1) {
            findings.Warn("object-name-repeated", world.At(id),
                          "there are several objects \"" + object.head.name + "\": this one is called " +
                              name + " and has no block of that name");
        }
    }
}

}  // namespace

void CheckBlocks(Findings& findings, const World& world) {
    for (const SceneSource& source : world.scenes) {
        if (source.objectEnd == source.firstObject || source.isRepeated ||
            !source.foreignAttributes.empty()) {
            continue;
        }
        if (!source.hasAttributes) {
            findings.Cause("no-attributes", world.settings.At(source.loadPosition),
                           "there is no attribute file " + source.attributesPath + " beside " +
                               source.path + ": no textures, no lights, no players");
            continue;
        }
        const bool isWhole =
            std::ranges::all_of(source.faults, [](const LoadFault& fault) { return fault.object >= 0; });
        Names ids;
        for (std::int32_t id = source.firstObject; id < source.objectEnd; id++) {
            if (world.Of(id).hasRecord) {
                ids.emplace(world.scene->objects[id].name, id);
            }
        }
        BlockCheck check{findings, world, source, ids};
        std::size_t judgedTo = 0;  // inside an open block the others are reported once only
        for (const Block& block : source.blocks) {
            const bool isTaken = !block.takers.empty() || block.isGlobals;
            if (!isTaken && isWhole) {
                check.CheckUntaken(block);
            } else if (isTaken) {
                check.CheckTakers(block);
                CheckKeys(findings, source.attributes, block.keys,
                          block.isGlobals ? KeyPlace::Globals : KeyPlace::Object, world.scene->playerCount);
            }
            if (block.depth == 0 && block.brace >= judgedTo) {
                check.CheckClosing(block);
                judgedTo = block.end;
            }
        }
        check.CheckStrayKeys();
        CheckNames(findings, world, source, ids);
    }
}
