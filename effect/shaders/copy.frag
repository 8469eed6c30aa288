#version 330
// Copies a texture unchanged.

uniform sampler2D inputTexture;

in vec2 out_uvs;

out vec4 colourOut;

void main() {
    colourOut = texture(inputTexture, out_uvs.xy);
}
