#pragma once

#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "scene/texture.h"
#include "scene_writer/bytes.h"
#include "scene_writer/image_file.h"
#include "support/command.h"
#include "support/temporary_folder.h"
#include "support/virtual_display.h"

using Bytes = std::vector<std::uint8_t>;

/// An image in which flat runs and noise alternate, so that both kinds of packets come up.
inline Image MakePicture(int width, int height, int channels) {
    std::mt19937 random(static_cast<std::uint32_t>(width + height + channels));
    Image image(width, height, channels);
    for (int y = 0; y < height; y++) {
        for (int channel = 0; channel < channels; channel++) {
            int value = 0;
            for (int x = 0; x < width; x++) {
                if (x % 32 >= 16 || random() % 8 == 0) value = static_cast<int>(random() % 256);
                image.At(x, y, channel) = static_cast<std::uint8_t>(value);
            }
        }
    }
    return image;
}

/// A folder of its own for image files.
struct ImageFileTest : testing::Test {
    TemporaryFolder folder;

    /// Has ImageMagick write the picture into a file of a kind that its name tells.
    void Convert(const Image& image, const std::string& options, const std::string& path) {
        std::string bytes = "P7\nWIDTH " + std::to_string(image.width) + "\nHEIGHT " +
                            std::to_string(image.height) + "\nDEPTH " + std::to_string(image.channels) +
                            "\nMAXVAL 255\nTUPLTYPE " +
                            (image.channels == 1   ? "GRAYSCALE"
                             : image.channels == 3 ? "RGB"
                                                   : "RGB_ALPHA") +
                            "\nENDHDR\n";
        for (int y = image.height - 1; y >= 0; y--) {  // the top row comes first there
            for (int x = 0; x < image.width; x++) {
                for (int channel = 0; channel < image.channels; channel++) {
                    bytes += static_cast<char>(image.At(x, y, channel));
                }
            }
        }
        WriteBytes("source.pam", bytes);
        const CommandResult result = RunCommand("convert source.pam " + options + " " + path + " 2>&1");
        ASSERT_EQ(result.exitCode, 0) << result.output;
    }
};

/// The same with a real window and its OpenGL context. Boxes go to the standard error stream.
struct TextureTest : ImageFileTest {
    /// Once for all tests, to the end of the process: drivers that are unloaded leave memory behind.
    static void SetUpTestSuite() {
        static VirtualDisplay* display = nullptr;
        if (display != nullptr) return;
        display = new VirtualDisplay;
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_VIDEO), 0) << SDL_GetError();
        SDL_Window* window = SDL_CreateWindow("textures", 0, 0, 64, 64, SDL_WINDOW_OPENGL);
        ASSERT_NE(SDL_GL_CreateContext(window), nullptr) << SDL_GetError();
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        unsetenv("DISPLAY");
    }

    static GLint Parameter(GLenum parameter) {
        GLint value = -1;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, parameter, &value);
        return value;
    }
    /// What OpenGL holds, in as many channels.
    static Bytes Uploaded(const Texture& texture, int channels) {
        const GLenum formats[] = {GL_LUMINANCE, GL_LUMINANCE_ALPHA, GL_RGB, GL_RGBA};
        glBindTexture(GL_TEXTURE_2D, texture.glName);
        const std::size_t pixelCount =
            static_cast<std::size_t>(Parameter(GL_TEXTURE_WIDTH)) * Parameter(GL_TEXTURE_HEIGHT);
        Bytes pixels(pixelCount * channels);
        glGetTexImage(GL_TEXTURE_2D, 0, formats[channels - 1], GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }
    /// Whether the record is usable, with or without an image.
    static void ExpectLoaded(const Texture& texture, const std::string& name) {
        EXPECT_EQ(texture.name, name);
        EXPECT_EQ(texture.pixels, nullptr);
        ASSERT_NE(texture.glName, 0u);
        glBindTexture(GL_TEXTURE_2D, texture.glName);
        GLint value = 0;
        for (const auto& [parameter, wanted] :
             {std::pair{GL_TEXTURE_WRAP_S, GL_REPEAT}, std::pair{GL_TEXTURE_WRAP_T, GL_REPEAT},
              std::pair{GL_TEXTURE_MAG_FILTER, GL_LINEAR}, std::pair{GL_TEXTURE_MIN_FILTER, GL_NEAREST}}) {
            glGetTexParameteriv(GL_TEXTURE_2D, parameter, &value);
            EXPECT_EQ(value, wanted);
        }
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &value);
        EXPECT_EQ(value, GL_MODULATE);
    }
};
