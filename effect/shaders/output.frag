#version 330
// Turns the premultiplied image into what the host reads back: straight colour, alpha first.

uniform sampler2D inputTexture;
uniform float multiplier16bit;  // 1, or 65535/32768 where the host's white is 32768 of 65535

in vec2 out_uvs;

out vec4 colourOut;  // alpha, red, green, blue

// Below this alpha a pixel loses colour and alpha altogether rather than be divided by almost nothing.
const float alphaFloor = 0.01;

vec4 straight(vec4 premultiplied) {
    if (premultiplied.a < alphaFloor) {
        return vec4(0.0, 0.0, 0.0, 0.0);
    }
    return vec4(premultiplied.rgb / premultiplied.a, premultiplied.a);
}

void main() {
    vec4 tex = straight(texture(inputTexture, out_uvs.xy));
    colourOut = vec4(tex.a, tex.r, tex.g, tex.b);
    colourOut = colourOut / multiplier16bit;
}
