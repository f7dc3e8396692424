#include <cmath>

#include "simulation/test_world.h"

namespace {

constexpr float quarterTurn = 1.57079633f;

Vector Centre(const Scene& scene, std::int32_t id) {
    return CentreOf(scene.objects[id]);
}

TEST(WorldStep, FallGetsFasterEveryFrame) {
    Scene scene;
    const std::int32_t stone = AddMarkers(scene, Vector(0, 0, 0));
    scene.objects[stone].MakePhysics();
    AddFloor(scene, -0.2f);  // without a collider it falls through everything
    for (const float z : {-0.1f, -0.3f, -0.6f}) {
        scene.StepWorld();
        ExpectNear(Centre(scene, stone), Vector(0, 0, z), 1e-6f);
    }
    // All of the object has come along.
    ExpectNear(VertexOf(scene.objects[stone], 3), Vector(0, 0, 0.4f), 1e-6f);
}

TEST(WorldStep, NothingAskedForLeavesEveryBitAlone) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0.1f, 0.2f, 0.3f));
    Object& object = scene.objects[body];
    object.physics->gravity = 0.0f;
    object.collider->airborne = 0;
    for (int frame = 0; frame < 100; frame++)
        scene.StepWorld();
    EXPECT_EQ(Centre(scene, body).x, 0.1f);
    EXPECT_EQ(object.collider->airborne, 0) << "there was no move, so it still stands";
}

TEST(WorldStep, BodyAtRestKeepsItsHeight) {
    Scene scene;
    LoggedScene logged(scene);
    const std::int32_t body = AddBody(scene, Vector(3, 4, 8));
    AddFloor(scene, 0.0f);
    for (int frame = 0; frame < 500; frame++)
        scene.StepWorld();
    for (int frame = 0; frame < 500; frame++) {
        scene.StepWorld();
        ExpectNear(Centre(scene, body), Vector(3, 4, 5.05f), 0.06f);
        EXPECT_GT(Centre(scene, body).z, 5.0f);
    }
    EXPECT_EQ(logged.CountLines(limitLine), 0);
}

TEST(WorldStep, PureRotationGoesThroughCollisionUntouched) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(10, 0, 0));
    Object& object = scene.objects[body];
    object.physics->gravity = 0.0f;
    object.collider->airborne = 0;
    object.transform.Rotate(quarterTurn, 0, 0, 1);
    scene.StepWorld();
    ExpectNear(Centre(scene, body), Vector(10, 0, 0), 1e-5f);
    ExpectNear(VertexOf(object, 1), Vector(10, -1, 0), 1e-5f);
    EXPECT_EQ(object.collider->airborne, 1) << "it counts as a move";
}

TEST(WorldStep, PlacedObjectArrivesThroughWallsAndRestsForOneFrame) {
    Scene scene;
    const std::int32_t body = AddBody(scene, Vector(0, 0, 50));
    AddWall(scene, 10.0f);
    Object& object = scene.objects[body];
    object.physics->velocity = Vector(1, 0, 0);
    object.transform.Translate(20, 0, 0);
    object.attributes[spawnStateAttribute] = justSpawned;
    scene.StepWorld();
    ExpectNear(Centre(scene, body), Vector(20, 0, 50));
    EXPECT_EQ(object.attributes[spawnStateAttribute], -1);
    ExpectNear(object.physics->velocity, Vector(1, 0, 0), 0.0f);
    scene.StepWorld();
    EXPECT_FLOAT_EQ(object.physics->velocity.z, -0.1f);
    EXPECT_GT(Centre(scene, body).x, 20.9f);
}

/// A parent at the origin with group 0, and a member at (5, 0, 0) that it carries.
struct Family {
    Scene scene;
    std::int32_t parent = 0;
    std::int32_t member = 1;

    Family() {
        AddMarkers(scene, Vector(0, 0, 0));
        AddMarkers(scene, Vector(5, 0, 0));
        scene.AddGroups(1);
        scene.groups[0].Add(member);
        scene.objects[parent].groupParent = 0;
    }
};

TEST(WorldStep, ParentCarriesItsMembers) {
    Family family;
    Scene& scene = family.scene;
    AddWall(scene, 2.0f);
    scene.objects[family.member].MakeCollider();
    scene.objects[family.parent].transform.Rotate(quarterTurn, 0, 0, 1);
    scene.objects[family.parent].transform.Translate(0, 0, 3);
    scene.StepWorld();
    // The positive angle turns X to minus Y, and no wall holds a member that is carried.
    ExpectNear(Centre(scene, family.member), Vector(0, -5, 3));
    ExpectNear(VertexOf(scene.objects[family.member], 1), Vector(0, -6, 3));
    ExpectNear(VertexOf(scene.objects[family.member], 4), Vector(0, -5, 3));
    ExpectNear(Centre(scene, family.parent), Vector(0, 0, 3));
}

TEST(WorldStep, OrderOfTheArrayDecidesWhoseMotionComesFirst) {
    // A member asks for a quarter turn about its own centre while its parent moves 10 along X: whether its
    // own turn is baked before or after, it ends at the same place. A move of its own is turned along with
    // the parent only if it has been made already.
    for (const bool memberFirst : {true, false}) {
        Family family;
        Scene& scene = family.scene;
        if (memberFirst) {
            std::swap(family.parent, family.member);
            scene.objects[family.parent].groupParent = 0;
            scene.objects[family.member].groupParent = -1;
            scene.groups[0].ids[0] = family.member;
        }
        scene.objects[family.member].transform.Translate(1, 0, 0);
        scene.objects[family.parent].transform.Rotate(quarterTurn, 0, 0, 1);
        const Vector before = Centre(scene, family.member) - Centre(scene, family.parent);
        const Vector pivot = Centre(scene, family.parent);
        scene.StepWorld();
        const Vector after = Centre(scene, family.member) - pivot;
        if (memberFirst) {
            ExpectNear(after, Vector(0, -(before.x + 1), 0));
        } else {
            ExpectNear(after, Vector(1, -before.x, 0));
        }
    }
}

TEST(WorldStep, MemberListedTwiceMovesTwice) {
    Family family;
    family.scene.groups[0].Add(family.member);
    family.scene.objects[family.parent].transform.Translate(0, 2, 0);
    family.scene.StepWorld();
    ExpectNear(Centre(family.scene, family.member), Vector(5, 4, 0));
    ExpectNear(Centre(family.scene, family.parent), Vector(0, 2, 0));
}

TEST(WorldStep, SpareVertexThatIsTheCentreSendsItToTheParent) {
    Family family;
    Object& member = family.scene.objects[family.member];
    member.spareVertex = member.centreVertex;
    family.scene.objects[family.parent].transform.Translate(0, 2, 0);
    family.scene.StepWorld();
    ExpectNear(CentreOf(member), Vector(0, 2, 0));
    ExpectNear(VertexOf(member, 1), Vector(6, 2, 0));
}

TEST(WorldStep, GroupsThatHoldEachOtherThemselvesOrNobodyAreHarmless) {
    Family family;
    Scene& scene = family.scene;
    scene.AddGroups(1);
    scene.objects[family.member].groupParent = 1;
    for (const std::int32_t id : {family.member, family.parent, -7, 2, 1000000}) {
        scene.groups[0].Add(id);
        scene.groups[1].Add(id);
    }
    AddKeyTracks(scene.objects[family.parent], 1, 2, Vector(0, 0, 1));
    scene.objects[family.parent].transform.Translate(1, 0, 0);
    scene.objects[family.parent].activeKeyTrack = 0;
    scene.StepWorld();
    // Listed twice in group 0, the member has come along twice. Of the parent's two keys one is its own,
    // from group 0; the other one comes from group 1, where the member hands the request on.
    ExpectNear(Centre(scene, family.member), Vector(7, 0, 0));
    EXPECT_FLOAT_EQ(Centre(scene, family.parent).x, 1.0f);

    scene.objects[family.parent].groupParent = 70000;
    scene.objects[family.member].groupParent = -5;
    scene.objects[family.parent].transform.Translate(1, 0, 0);
    scene.objects[family.member].activeKeyTrack = 12;
    scene.StepWorld();
    EXPECT_FLOAT_EQ(Centre(scene, family.parent).x, 2.0f);
}

TEST(WorldStep, TrackGoesRoundInOneFrameMoreThanItHasKeys) {
    Scene scene;
    const std::int32_t id = AddMarkers(scene, Vector(0, 0, 0));
    AddKeyTracks(scene.objects[id], 1, 3, Vector(0, 0, 1));
    for (int cycle = 0; cycle < 3; cycle++) {
        for (const float z : {1.0f, 2.0f, 3.0f, 0.0f}) {
            scene.objects[id].activeKeyTrack = 0;
            scene.StepWorld();
            ExpectNear(Centre(scene, id), Vector(0, 0, z), 1e-5f);
        }
    }
    scene.StepWorld();
    ExpectNear(Centre(scene, id), Vector(0, 0, 0), 1e-5f);
}

TEST(WorldStep, GroupPlaysTheTrackOfItsParent) {
    Family family;
    Scene& scene = family.scene;
    AddKeyTracks(scene.objects[family.parent], 1, 9, Vector(0, 0, 1));
    AddKeyTracks(scene.objects[family.member], 1, 9, Vector(1, 0, 0));
    // The parent faces a quarter turn to the side, and its members' keys go along its axes. It isn't on
    // its own list and plays its own key in the world's axes.
    scene.objects[family.parent].SetVertex(Vector(0, 1, 0), 1);
    scene.objects[family.parent].SetVertex(Vector(-1, 0, 0), 2);
    scene.objects[family.parent].activeKeyTrack = 0;
    scene.StepWorld();
    ExpectNear(Centre(scene, family.member), Vector(5, 1, 0));
    ExpectNear(Centre(scene, family.parent), Vector(0, 0, 1));
    EXPECT_EQ(scene.objects[family.member].keyTracks[0].currentKey, 1);
    EXPECT_EQ(scene.objects[family.parent].keyTracks[0].currentKey, 1);

    // On its own list it plays one key a frame, not two.
    scene.groups[0].Add(family.parent);
    scene.objects[family.parent].activeKeyTrack = 0;
    scene.StepWorld();
    EXPECT_EQ(scene.objects[family.parent].keyTracks[0].currentKey, 2);
    EXPECT_EQ(scene.objects[family.member].keyTracks[0].currentKey, 2);
    // A track that a member doesn't have is no request.
    scene.objects[family.parent].activeKeyTrack = 1;
    scene.StepWorld();
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        EXPECT_EQ(scene.objects[i].activeKeyTrack, -1);
        EXPECT_TRUE(scene.objects[i].transform.IsIdentity());
    }
}

TEST(WorldStep, LaterObjectsMeetTheNewPlacesOfEarlierOnes) {
    // Two bodies run towards each other along X, 10 apart. The first to move sees the other where it was
    // and gets through the frame; the other one then meets it where it is.
    Scene scene;
    const std::int32_t first = AddBody(scene, Vector(0, 0, 0));
    const std::int32_t second = AddBody(scene, Vector(10, 0, 0));
    for (const std::int32_t id : {first, second})
        scene.objects[id].physics->gravity = 0.0f;
    scene.objects[first].physics->velocity = Vector(5, 0, 0);
    scene.objects[second].physics->velocity = Vector(-5, 0, 0);
    scene.StepWorld();
    ExpectNear(Centre(scene, first), Vector(4.98f, 0, 0), 1e-3f);
    EXPECT_NEAR(Centre(scene, second).x, 4.98f + 2.02f, 0.05f) << "two units before the other's new place";
}

}  // namespace
