#include <map>

#include "gl_lights/gl_lights.h"
#include "gl_recorder.h"
#include "render/gl_state.h"
#include "render_test.h"

// The calls themselves, written down in full: what other programs that watch the context may rely on.
struct GlTraceTest : RenderTest {
    /// What the numbers are called in the lists below.
    std::map<std::string, std::string> names;

    template <typename Value>
    void Name(const std::string& name, Value value) {
        names[name] = Call("", value).substr(1);
    }

    GlTraceTest() {
        // clang-format off
        const std::pair<const char*, GLenum> known[] = {
            {"PROJECTION", GL_PROJECTION}, {"MODELVIEW", GL_MODELVIEW}, {"MODELVIEW_MATRIX", GL_MODELVIEW_MATRIX},
            {"TEXTURE_2D", GL_TEXTURE_2D}, {"LIGHTING", GL_LIGHTING}, {"ALPHA_TEST", GL_ALPHA_TEST},
            {"BLEND", GL_BLEND}, {"FLOAT", GL_FLOAT}, {"L0", GL_LIGHT0}, {"L1", GL_LIGHT1},
            {"VERTICES", GL_VERTEX_ARRAY}, {"NORMALS", GL_NORMAL_ARRAY}, {"COLOURS", GL_COLOR_ARRAY},
            {"TEX_VERTICES", GL_TEXTURE_COORD_ARRAY}, {"AMBIENT", GL_AMBIENT}, {"POSITION", GL_POSITION},
            {"SPOT_DIRECTION", GL_SPOT_DIRECTION}, {"QUADRATIC", GL_QUADRATIC_ATTENUATION}};
        // clang-format on
        for (const auto& [name, value] : known) {
            Name(name, value);
        }
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
        timer.loopTime = 1;
        scene.fontListBase = 500;
        glDisable(GL_TEXTURE_2D);
        for (const std::string n : {"1", "2"}) {
            const Object& object = scene.objects[n[0] - '0'];
            Name("v" + n, object.vertices.get());
            Name("t" + n, object.texVertices.get());
            Name("n" + n, object.normals.get());
            Name("c" + n, object.colours.get());
            Name("f" + n, object.faces.get());
        }
    }

    /// Splits the text at semicolons, and puts the numbers in.
    std::vector<std::string> Calls(const std::string& text) const {
        std::vector<std::string> calls(1);
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            const bool ends = word.back() == ';';
            if (ends) {
                word.pop_back();
            }
            const auto name = names.find(word);
            calls.back() += (calls.back().empty() ? "" : " ") + (name != names.end() ? name->second : word);
            if (ends) {
                calls.emplace_back();
            }
        }
        calls.pop_back();
        return calls;
    }
};

const std::string beforeObjects =
    "glClear 16640; glViewport 5 6 70 80; glPushMatrix; gluLookAt 0 -10 2 0 0 2 0 0 1; glPushMatrix;"
    " glLightfv L0 SPOT_DIRECTION 0 0 -1; glLightfv L0 POSITION 0 -1 0 0;"
    // The rate, at the window's corner.
    " glPushAttrib 6144; glMatrixMode PROJECTION; glPushMatrix; glLoadIdentity; glMatrixMode MODELVIEW;"
    " glPushMatrix; glLoadIdentity; glDepthRange 0 0; glViewport 9 9 2 2; glRasterPos4f 0 0 0 1;"
    " glPopMatrix; glMatrixMode PROJECTION; glPopMatrix; glPopAttrib;"
    " glPushAttrib 131072; glListBase 468; glCallLists \"1000.000000\"; glPopAttrib; ";

// The sprite at distance 10 is cut out, the one at distance 6 added.
const std::string afterObjects =
    " glGetFloatv MODELVIEW_MATRIX; glEnable TEXTURE_2D; glDisable LIGHTING; glIsEnabled ALPHA_TEST;"
    " glIsEnabled BLEND; glEnable ALPHA_TEST; glAlphaFunc 516 0; glBindTexture TEXTURE_2D 40; glBegin 7;"
    " glTexCoord2f 0 0; glVertex3f -2 0 2; glTexCoord2f 1 0; glVertex3f 2 0 2;"
    " glTexCoord2f 1 1; glVertex3f 2 0 6; glTexCoord2f 0 1; glVertex3f -2 0 6; glEnd;"
    " glIsEnabled BLEND; glIsEnabled ALPHA_TEST; glDisable ALPHA_TEST; glEnable BLEND; glBlendFunc 770 1;"
    " glBegin 7; glTexCoord2f 0 0; glVertex3f -1 -4 2; glTexCoord2f 1 0; glVertex3f 1 -4 2;"
    " glTexCoord2f 1 1; glVertex3f 1 -4 4; glTexCoord2f 0 1; glVertex3f -1 -4 4; glEnd;"
    " glIsEnabled BLEND; glDisable BLEND; glIsEnabled ALPHA_TEST; glDisable TEXTURE_2D; glEnable LIGHTING;"
    " glPopMatrix; glPopMatrix;";

TEST_F(GlTraceTest, FrameOfVertexArrays) {
    BuildSmallScene();
    GlRecorder recorder;
    Draw(false);
    EXPECT_EQ(
        recorder.calls,
        Calls(beforeObjects +
              "glEnableClientState VERTICES; glEnableClientState NORMALS; glEnableClientState COLOURS;"
              " glEnableClientState TEX_VERTICES; glIsEnabled TEXTURE_2D; glEnable TEXTURE_2D;"
              " glBindTexture TEXTURE_2D 40; glVertexPointer 3 FLOAT 0 v1; glTexCoordPointer 3 FLOAT 0 t1;"
              " glNormalPointer FLOAT 0 n1; glColorPointer 3 FLOAT 0 c1; glDrawElements 4 3 5125 f1;"
              " glDisableClientState TEX_VERTICES; glIsEnabled TEXTURE_2D; glDisable TEXTURE_2D;"
              " glVertexPointer 3 FLOAT 0 v2; glNormalPointer FLOAT 0 n2; glColorPointer 3 FLOAT 0 c2;"
              " glDrawElements 4 4 5125 f2; glDisableClientState VERTICES;"
              " glDisableClientState NORMALS; glDisableClientState COLOURS;" +
              afterObjects));
}

TEST_F(GlTraceTest, FrameByCorners) {
    BuildSmallScene();
    GlRecorder recorder;
    Draw(true);
    const std::string same = " glColor3f 1 1 1; glNormal3f 0 -1 0; glVertex3f ";
    EXPECT_EQ(recorder.calls,
              Calls(beforeObjects +
                    "glIsEnabled TEXTURE_2D; glEnable TEXTURE_2D; glBindTexture TEXTURE_2D 40; glBegin 4;"
                    " glTexCoord3f 0 0 0;" +
                    same + "-1 0 -1; glTexCoord3f 1 0 0;" + same + "1 0 -1; glTexCoord3f 1 1 0;" + same +
                    "1 0 1; glEnd;"
                    " glIsEnabled TEXTURE_2D; glDisable TEXTURE_2D; glBegin 4;" +
                    same + "-2 1 -2;" + same + "2 1 -2;" + same + "2 1 2; glEnd;" + afterObjects));
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
    EXPECT_EQ(
        recorder.calls,
        Calls("glShadeModel 7425; glPolygonMode 1028 6914; glEnable 2884; glEnable 2929;"
              " glDepthFunc 513; glEnable 2903; glEnable TEXTURE_2D; glEnable LIGHTING;"
              " glClearColor 0.2 0.2 1 1; glPixelStorei 3317 1; glTexParameterf TEXTURE_2D 10240 9728;"
              " glTexParameterf TEXTURE_2D 10241 9728; glPointSize 10;"));
}

TEST_F(GlTraceTest, LightTakesTheFirstFreeOneAndUploadsItself) {
    glEnable(GL_LIGHT0);
    Light light;
    light.spotExponent = 3.0f;
    GlRecorder recorder;
    Activate(light);
    const float colour[4] = {0.25f, 0.5f, 0.75f, 0.125f};
    SetAmbient(light, colour);
    SetQuadraticAttenuation(light, 2.0f);
    Deactivate(light);
    EXPECT_EQ(recorder.calls,
              Calls("glGetIntegerv 3377; glIsEnabled L0; glIsEnabled L1; glEnable L1;"
                    " glLightfv L1 AMBIENT 0 0 0 1; glLightfv L1 4609 1 1 1 1; glLightfv L1 4610 1 1 1 1;"
                    " glLightfv L1 POSITION 0 0 1 0; glLightfv L1 4614 180;"
                    " glLightfv L1 SPOT_DIRECTION 0 0 -1; glLightfv L1 4613 3; glLightfv L1 4615 1;"
                    " glLightfv L1 4616 0; glLightfv L1 QUADRATIC 0;"
                    " glLightfv L1 AMBIENT 0.25 0.5 0.75 0.125; glLightfv L1 QUADRATIC 2; glDisable L1;"));
    EXPECT_EQ(light.glLight, -1);
    EXPECT_EQ(light.ambient[2], 0.75f);
}
