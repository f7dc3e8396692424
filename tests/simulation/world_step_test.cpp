#include "simulation/test_world.h"

namespace {

TEST(WorldStep, FallGetsFasterEveryFrame) {
    Scene scene;
    const std::int32_t stone = AddMarkers(scene, Vector(0, 0, 0.1f));
    scene.objects[stone].MakePhysics();
    AddFloor(scene);  // without a collider it falls through everything
    for (const float z : {0.0f, -0.2f, -0.5f}) {
        scene.StepWorld();
        ExpectNear(CentreOf(scene.objects[stone]), Vector(0, 0, z), 1e-6f);
    }
    ExpectNear(VertexOf(scene.objects[stone], 3), Vector(0, 0, 0.5f), 1e-6f);
}

TEST(WorldStep, BodyAtRestKeepsItsHeight) {
    Scene scene;
    LoggedScene logged(scene);
    const std::int32_t body = AddBody(scene, Vector(3, 4, 8));
    AddFloor(scene);
    for (int frame = 0; frame < 1000; frame++) {
        scene.StepWorld();
        if (frame < 500) {
            continue;
        }
        ExpectNear(CentreOf(scene.objects[body]), Vector(3, 4, 5.05f), 0.06f);
        EXPECT_GT(CentreOf(scene.objects[body]).z, 5.0f);
    }
    EXPECT_EQ(logged.Rescues(), 0);
}

TEST(WorldStep, NothingAskedForIsNoMoveButARotationIs) {
    Scene scene;
    Object& object = scene.objects[AddBody(scene, Vector())];
    object.physics->gravity = 0.0f;
    object.collider->airborne = 0;
    scene.StepWorld();
    EXPECT_EQ(object.collider->airborne, 0) << "it still stands";
    object.transform.Rotate(quarterTurn, 0, 0, 1);
    scene.StepWorld();
    EXPECT_EQ(object.collider->airborne, 1);
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
    ExpectNear(CentreOf(object), Vector(20, 0, 50));
    EXPECT_EQ(object.attributes[spawnStateAttribute], -1);
    ExpectNear(object.physics->velocity, Vector(1, 0, 0), 0.0f);
    scene.StepWorld();
    EXPECT_FLOAT_EQ(object.physics->velocity.z, -0.1f);
    EXPECT_GT(CentreOf(object).x, 20.9f);
}

/// A parent at the origin with group 0, and a member at (5, 0, 0) that it carries.
struct Family {
    Scene scene;
    const std::int32_t parent = 0;
    const std::int32_t member = 1;

    Family() {
        scene.AddObjects(2);
        MakeMarkers(Parent(), Vector(0, 0, 0));
        MakeMarkers(Member(), Vector(5, 0, 0));
        scene.AddGroups(1);
        scene.groups[0].Add(member);
        Parent().groupParent = 0;
    }
    Object& Parent() { return scene.objects[parent]; }
    Object& Member() { return scene.objects[member]; }
};

TEST(WorldStep, ParentCarriesItsMembers) {
    Family family;
    AddWall(family.scene, 2.0f);
    family.Member().MakeCollider();
    family.Member().SetVertex(Vector(9, 9, 9), family.Member().spareVertex);  // of no account
    family.Parent().transform.Rotate(quarterTurn, 0, 0, 1);
    family.Parent().transform.Translate(0, 0, 3);
    family.scene.StepWorld();
    // The positive angle turns X to minus Y, and no wall holds a member that is carried.
    ExpectNear(CentreOf(family.Member()), Vector(0, -5, 3));
    ExpectNear(VertexOf(family.Member(), 1), Vector(0, -6, 3));
    ExpectNear(CentreOf(family.Parent()), Vector(0, 0, 3));
    // Listed twice it moves twice.
    family.scene.groups[0].Add(family.member);
    family.Parent().transform.Translate(0, 2, 0);
    family.scene.StepWorld();
    ExpectNear(CentreOf(family.Member()), Vector(0, -1, 3));
    ExpectNear(CentreOf(family.Parent()), Vector(0, 2, 3));
}

TEST(WorldStep, SpareVertexThatIsTheCentreSendsItToTheParent) {
    Family family;
    family.Member().spareVertex = family.Member().centreVertex;
    family.Parent().transform.Translate(0, 2, 0);
    family.scene.StepWorld();
    ExpectNear(CentreOf(family.Member()), Vector(0, 2, 0));
    ExpectNear(VertexOf(family.Member(), 1), Vector(6, 2, 0));
}

TEST(WorldStep, GroupsThatHoldEachOtherThemselvesOrNobodyAreHarmless) {
    Family family;
    family.scene.AddGroups(1);
    family.Member().groupParent = 1;
    for (const std::int32_t id : {family.member, family.parent, -7, 2, 1000000}) {
        family.scene.groups[0].Add(id);
        family.scene.groups[1].Add(id);
    }
    family.Parent().transform.Translate(1, 0, 0);
    family.Parent().activeKeyTrack = 12;
    family.scene.StepWorld();
    // Listed twice in group 0, the member has come along twice.
    ExpectNear(CentreOf(family.Member()), Vector(7, 0, 0));
    family.Parent().groupParent = 70000;
    family.Parent().transform.Translate(1, 0, 0);
    family.scene.StepWorld();
    EXPECT_FLOAT_EQ(CentreOf(family.Parent()).x, 2.0f);
}

TEST(WorldStep, GroupPlaysTheTrackOfItsParent) {
    Family family;
    for (Object* object : {&family.Parent(), &family.Member()}) {
        AddKeyTracks(*object, 1, 9, object == &family.Parent() ? Vector(0, 1, 1) : Vector(1, 0, 0));
    }
    // The parent faces a quarter turn to the side, and its members' keys go along its axes. It isn't on
    // its own list and plays its own key in the world's axes.
    family.Parent().SetVertex(Vector(0, 1, 0), 1);
    family.Parent().SetVertex(Vector(-1, 0, 0), 2);
    for (int frame = 1; frame <= 2; frame++) {
        family.Parent().activeKeyTrack = 0;
        family.scene.StepWorld();
        EXPECT_EQ(family.Parent().keyTracks[0].currentKey, frame);
        EXPECT_EQ(family.Member().keyTracks[0].currentKey, frame);
        ExpectNear(CentreOf(family.Member()), Vector(5, static_cast<float>(frame), 0));
        ExpectNear(CentreOf(family.Parent()),
                   Vector(0, static_cast<float>(frame), static_cast<float>(frame)));
        // On its own list it plays one key a frame, too, and not two.
        family.scene.groups[0].Add(family.parent);
    }
}

TEST(WorldStep, LaterObjectsMeetTheNewPlacesOfEarlierOnes) {
    // Two bodies run towards each other along X, 10 apart. The first to move sees the other where it was
    // and gets through the frame; the other one then meets it where it is.
    Scene scene;
    for (const float x : {0.0f, 10.0f}) {
        Physics& physics = *scene.objects[AddBody(scene, Vector(x, 0, 0))].physics;
        physics.gravity = 0.0f;
        physics.velocity = Vector(5 - x, 0, 0);
    }
    scene.StepWorld();
    ExpectNear(CentreOf(scene.objects[0]), Vector(4.98f, 0, 0), 1e-3f);
    EXPECT_NEAR(CentreOf(scene.objects[1]).x, 4.98f + 2.02f, 0.05f)
        << "two units before the other's new place";
}

}  // namespace
