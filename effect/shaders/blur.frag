#version 330
// Reduces the double-size image: five taps of equal weight, the centre and the four diagonals.
// The image is premultiplied here, so all four channels are filtered alike.

uniform sampler2D inputTexture;
uniform vec2 px;  // half an output pixel, which is one texel of the source

in vec2 out_uvs;

out vec4 colourOut;

vec4 tap(float dx, float dy) {
    return texture(inputTexture, vec2(out_uvs.x + dx, out_uvs.y + dy));
}

void main() {
    colourOut =
        (tap(0.0, 0.0) + tap(px.x, px.y) + tap(-px.x, px.y) + tap(px.x, -px.y) + tap(-px.x, -px.y)) / 5.0;
}
