#include "gl_recorder.h"
#include "render/gl_state.h"
#include "render_test.h"
#include "services/log.h"
#include "support/temporary_folder.h"

// The calls themselves, written down in full: what other programs that watch the context may rely on.
struct GlTraceTest : RenderTest {
    using Calls = std::vector<std::string>;

    static void Append(Calls& calls, const Calls& more) {
        calls.insert(calls.end(), more.begin(), more.end());
    }

    /// One player, one light, a textured and an untextured triangle, and one sprite of each kind.
    void BuildSmallScene() {
        AddPlayer(Vector(0, -10, 2), Vector(0, 0, 2), {5, 6, 70, 80});
        scene.objects[0].attributes[invisibleAttribute] = 1;
        AddRectangle(-1, -1, 1, 1).faceValueCount = 3;
        AddRectangle(-2, -2, 2, 2, 1).faceValueCount = 4;
        scene.AddTextures(1);
        scene.textures[0].glName = 40;
        scene.objects[1].textureIndex = 0;
        AddHeadlight();
        AddSprite(Vector(0, -4, 2), 2, 0, -1);
        AddSprite(Vector(0, 0, 2), 4, 1, 0);
        timer.loopTime = 20;
        scene.fontListBase = 500;
        glDisable(GL_TEXTURE_2D);
    }

    Calls FrameBeforeObjects() const {
        return Calls{Call("glClear", 0x4100),
                     Call("glViewport", 5, 6, 70, 80),
                     Call("glPushMatrix"),
                     Call("gluLookAt", 0, -10, 2, 0, 0, 2, 0, 0, 1),
                     Call("glPushMatrix"),
                     LightCall(GL_LIGHT0, GL_SPOT_DIRECTION, {0, 0, -1}),
                     LightCall(GL_LIGHT0, GL_POSITION, {0, -1, 0, 0}),
                     Call("glPushAttrib", 0x1800),
                     Call("glMatrixMode", GL_PROJECTION),
                     Call("glPushMatrix"),
                     Call("glLoadIdentity"),
                     Call("glMatrixMode", GL_MODELVIEW),
                     Call("glPushMatrix"),
                     Call("glLoadIdentity"),
                     Call("glDepthRange", 0, 0),
                     Call("glViewport", 9, 9, 2, 2),
                     Call("glRasterPos4f", 0, 0, 0, 1),
                     Call("glPopMatrix"),
                     Call("glMatrixMode", GL_PROJECTION),
                     Call("glPopMatrix"),
                     Call("glPopAttrib"),
                     Call("glPushAttrib", 0x20000),
                     Call("glListBase", 500 - 32),
                     CallWithText("glCallLists", "50.000000"),
                     Call("glPopAttrib")};
    }

    static Calls SpriteCalls(float left, float bottom, float right, float top, float y) {
        return Calls{Call("glBegin", GL_QUADS),
                     Call("glTexCoord2f", 0, 0),
                     Call("glVertex3f", left, y, bottom),
                     Call("glTexCoord2f", 1, 0),
                     Call("glVertex3f", right, y, bottom),
                     Call("glTexCoord2f", 1, 1),
                     Call("glVertex3f", right, y, top),
                     Call("glTexCoord2f", 0, 1),
                     Call("glVertex3f", left, y, top),
                     Call("glEnd")};
    }

    /// The sprite at distance 10 is cut out, the one at distance 6 added.
    static Calls FrameAfterObjects() {
        Calls calls{Call("glGetFloatv", GL_MODELVIEW_MATRIX),
                    Call("glEnable", GL_TEXTURE_2D),
                    Call("glDisable", GL_LIGHTING),
                    Call("glIsEnabled", GL_ALPHA_TEST),
                    Call("glIsEnabled", GL_BLEND),
                    Call("glEnable", GL_ALPHA_TEST),
                    Call("glAlphaFunc", GL_GREATER, 0),
                    Call("glBindTexture", GL_TEXTURE_2D, 40)};
        Append(calls, SpriteCalls(-2, 2, 2, 6, 0));
        Append(calls, Calls{Call("glIsEnabled", GL_BLEND), Call("glIsEnabled", GL_ALPHA_TEST),
                            Call("glDisable", GL_ALPHA_TEST), Call("glEnable", GL_BLEND),
                            Call("glBlendFunc", GL_SRC_ALPHA, GL_ONE)});
        Append(calls, SpriteCalls(-1, 2, 1, 4, -4));
        Append(calls, Calls{Call("glIsEnabled", GL_BLEND), Call("glDisable", GL_BLEND),
                            Call("glIsEnabled", GL_ALPHA_TEST), Call("glDisable", GL_TEXTURE_2D),
                            Call("glEnable", GL_LIGHTING), Call("glPopMatrix"), Call("glPopMatrix")});
        return calls;
    }
};

TEST_F(GlTraceTest, FrameOfVertexArrays) {
    BuildSmallScene();
    const Object& textured = scene.objects[1];
    const Object& plain = scene.objects[2];
    Calls expected = FrameBeforeObjects();
    Append(expected, Calls{Call("glEnableClientState", GL_VERTEX_ARRAY),
                           Call("glEnableClientState", GL_NORMAL_ARRAY),
                           Call("glEnableClientState", GL_COLOR_ARRAY),
                           Call("glEnableClientState", GL_TEXTURE_COORD_ARRAY),
                           Call("glIsEnabled", GL_TEXTURE_2D),
                           Call("glEnable", GL_TEXTURE_2D),
                           Call("glBindTexture", GL_TEXTURE_2D, 40),
                           Call("glVertexPointer", 3, GL_FLOAT, 0, textured.vertices.get()),
                           Call("glTexCoordPointer", 3, GL_FLOAT, 0, textured.texVertices.get()),
                           Call("glNormalPointer", GL_FLOAT, 0, textured.normals.get()),
                           Call("glColorPointer", 3, GL_FLOAT, 0, textured.colours.get()),
                           Call("glDrawElements", GL_TRIANGLES, 3, GL_UNSIGNED_INT, textured.faces.get()),
                           Call("glDisableClientState", GL_TEXTURE_COORD_ARRAY),
                           Call("glIsEnabled", GL_TEXTURE_2D),
                           Call("glDisable", GL_TEXTURE_2D),
                           Call("glVertexPointer", 3, GL_FLOAT, 0, plain.vertices.get()),
                           Call("glNormalPointer", GL_FLOAT, 0, plain.normals.get()),
                           Call("glColorPointer", 3, GL_FLOAT, 0, plain.colours.get()),
                           Call("glDrawElements", GL_TRIANGLES, 4, GL_UNSIGNED_INT, plain.faces.get()),
                           Call("glDisableClientState", GL_VERTEX_ARRAY),
                           Call("glDisableClientState", GL_NORMAL_ARRAY),
                           Call("glDisableClientState", GL_COLOR_ARRAY)});
    Append(expected, FrameAfterObjects());
    GlRecorder recorder;
    Draw(false);
    EXPECT_EQ(recorder.calls, expected);
}

TEST_F(GlTraceTest, FrameByCorners) {
    BuildSmallScene();
    Calls expected = FrameBeforeObjects();
    Append(expected, Calls{Call("glIsEnabled", GL_TEXTURE_2D), Call("glEnable", GL_TEXTURE_2D),
                           Call("glBindTexture", GL_TEXTURE_2D, 40), Call("glBegin", GL_TRIANGLES)});
    const float corners[3][2] = {{0, 0}, {1, 0}, {1, 1}};
    for (const auto& [s, t] : corners) {
        Append(expected, Calls{Call("glTexCoord3f", s, t, 0), Call("glColor3f", 1, 1, 1),
                               Call("glNormal3f", 0, -1, 0), Call("glVertex3f", 2 * s - 1, 0, 2 * t - 1)});
    }
    Append(expected, Calls{Call("glEnd"), Call("glIsEnabled", GL_TEXTURE_2D),
                           Call("glDisable", GL_TEXTURE_2D), Call("glBegin", GL_TRIANGLES)});
    for (const auto& [s, t] : corners) {
        Append(expected, Calls{Call("glColor3f", 1, 1, 1), Call("glNormal3f", 0, -1, 0),
                               Call("glVertex3f", 4 * s - 2, 1, 4 * t - 2)});
    }
    Append(expected, Calls{Call("glEnd")});
    Append(expected, FrameAfterObjects());
    GlRecorder recorder;
    Draw(true);
    EXPECT_EQ(recorder.calls, expected);
}

// The one point on which the paths differ: a texture without coordinates.
TEST_F(GlTraceTest, TextureWithoutCoordinates) {
    AddStandardPlayer();
    scene.objects[0].attributes[invisibleAttribute] = 1;
    AddTexture({});
    Object& object = AddRectangle(-1, -1, 1, 1);
    object.textureIndex = 0;
    object.texVertices = nullptr;
    for (const bool safe : {false, true}) {
        GlRecorder recorder;
        Draw(safe);
        EXPECT_EQ(recorder.CallsOf({"glBindTexture"}).size(), safe ? 1u : 0u);
        EXPECT_TRUE(recorder.CallsOf({"glTexCoord3f", "glTexCoordPointer"}).empty());
    }
}

TEST_F(GlTraceTest, StartOfTheContext) {
    GlRecorder recorder;
    InitGlState();
    EXPECT_EQ(recorder.calls,
              (Calls{Call("glShadeModel", 0x1D01), Call("glPolygonMode", 0x0404, 0x1B02),
                     Call("glEnable", 0x0B44), Call("glEnable", 0x0B71), Call("glDepthFunc", 0x0201),
                     Call("glEnable", 0x0B57), Call("glEnable", 0x0DE1), Call("glEnable", 0x0B50),
                     Call("glClearColor", 0.2f, 0.2f, 1, 1), Call("glPixelStorei", 0x0CF5, 1),
                     Call("glTexParameterf", GL_TEXTURE_2D, 0x2800, 9728.0f),
                     Call("glTexParameterf", GL_TEXTURE_2D, 0x2801, 9728.0f), Call("glPointSize", 10)}));
}

TEST_F(GlTraceTest, ReportIsInTheLog) {
    const TemporaryFolder folder;
    Log log;
    scene.SetLog(&log);
    GLint depthBits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    scene.ReportGlCapabilities();
    const std::string text = ReadWholeFile("defaultlog.txt");
    std::size_t place = 0;
    const std::string depth = " Number of Depth bits: " + std::to_string(depthBits) + "\n";
    for (const char* entry :
         {depth.c_str(), " Number of Blue bits: 8\n", " Number of Green bits: 8\n",
          " Number of Red bits: 8\n", " Number of Blue bits in Accumulation Buffer: ",
          " Number of Green bits in Accumulation Buffer: ", " Number of Red bits in Accumulation Buffer: ",
          " Number of bits in Stencil Buffer: ", " Depth test: 1\n", " Backface cull: 1\n",
          " Number of lights supported by implementation: 8\n"}) {
        place = text.find(entry, place);
        ASSERT_NE(place, std::string::npos) << entry << text;
    }
}

TEST_F(GlTraceTest, LightTakesTheFirstFreeOneAndUploadsItself) {
    glEnable(GL_LIGHT0);
    Light light;
    light.spotExponent = 3.0f;
    GlRecorder recorder;
    light.Activate();
    const float colour[4] = {0.25f, 0.5f, 0.75f, 0.125f};
    light.SetAmbient(colour);
    light.SetQuadraticAttenuation(2.0f);
    light.Deactivate();
    const GLenum held = GL_LIGHT0 + 1;
    EXPECT_EQ(
        recorder.calls,
        (Calls{Call("glGetIntegerv", GL_MAX_LIGHTS), Call("glIsEnabled", GL_LIGHT0),
               Call("glIsEnabled", held), Call("glEnable", held), LightCall(held, GL_AMBIENT, {0, 0, 0, 1}),
               LightCall(held, GL_DIFFUSE, {1, 1, 1, 1}), LightCall(held, GL_SPECULAR, {1, 1, 1, 1}),
               LightCall(held, GL_POSITION, {0, 0, 1, 0}), LightCall(held, GL_SPOT_CUTOFF, {180}),
               LightCall(held, GL_SPOT_DIRECTION, {0, 0, -1}), LightCall(held, GL_SPOT_EXPONENT, {3}),
               LightCall(held, GL_CONSTANT_ATTENUATION, {1}), LightCall(held, GL_LINEAR_ATTENUATION, {0}),
               LightCall(held, GL_QUADRATIC_ATTENUATION, {0}),
               LightCall(held, GL_AMBIENT, {0.25f, 0.5f, 0.75f, 0.125f}),
               LightCall(held, GL_QUADRATIC_ATTENUATION, {2}), Call("glDisable", held)}));
    EXPECT_EQ(light.glLight, -1);
    EXPECT_EQ(light.ambient[2], 0.75f);
    EXPECT_EQ(light.quadraticAttenuation, 2.0f);
}
