"""Draws the sample card's pictures: landscapes and patterns, the same ones every time."""
import math
import random
from collections.abc import Callable, Iterator

from PIL import Image, ImageChops, ImageDraw, ImageFilter, ImageOps

Colour = tuple[int, int, int]


def blend(a: Colour, b: Colour, t: float) -> Colour:
    """The colour between `a` and `b` at `t` from 0 to 1."""
    return tuple(round(x + (y - x) * t) for x, y in zip(a, b))  # type: ignore[return-value]


def sky(size: tuple[int, int], top: Colour, bottom: Colour) -> Image.Image:
    """A vertical gradient."""
    return ImageOps.colorize(Image.linear_gradient('L'), top, bottom).resize(size, Image.BICUBIC)


def clouds(rng: random.Random, size: tuple[int, int], octaves: int = 5) -> Image.Image:
    """Soft noise, a grey picture."""
    picture = Image.new('L', size, 128)
    for octave in range(octaves):
        cells = (4 << octave, 3 << octave)
        layer = Image.frombytes('L', cells, rng.randbytes(cells[0] * cells[1]))
        weight = 0.6 / (octave + 1) + 0.1
        picture = Image.blend(picture, layer.resize(size, Image.BICUBIC), weight)
    return ImageOps.autocontrast(picture)


def grain(rng: random.Random, picture: Image.Image, strength: int = 8) -> Image.Image:
    """The noise of a camera's sensor."""
    noise = Image.frombytes('L', (256, 256), rng.randbytes(65536))
    noise = noise.point([128 + (i - 128) * strength // 128 for i in range(256)])
    tiled = Image.new('L', picture.size)
    for x in range(0, picture.width, 256):
        for y in range(0, picture.height, 256):
            tiled.paste(noise.transpose(rng.randrange(7)), (x, y))
    return ImageChops.add(picture, Image.merge('RGB', [tiled] * 3), 1, -128)


def glow(picture: Image.Image, centre: tuple[float, float], radius: float, colour: Colour) -> None:
    """Light around a point, added in place."""
    # The gradient has 181 in the middle of each edge, where the light must have ended.
    fall = [round(255 * max(0, 1 - i / 180) ** 2) for i in range(256)]
    spot = Image.radial_gradient('L').point(fall)
    side = max(2, round(radius * 2))
    light = ImageOps.colorize(spot, (0, 0, 0), colour).resize((side, side), Image.BICUBIC)
    layer = Image.new('RGB', picture.size)
    layer.paste(light, (round(centre[0] - radius), round(centre[1] - radius)))
    picture.paste(ImageChops.screen(picture, layer))


def ridge(rng: random.Random, width: int, base: float, height: float) -> list[tuple[int, float]]:
    """The outline of a chain of hills."""
    waves = [(rng.uniform(0.4, 1) * height / 2 ** k, rng.uniform(1.2, 2.1) * 2 ** k,
              rng.uniform(0, 2 * math.pi)) for k in range(7)]
    return [(x, base - sum(a * math.sin(f * 2 * math.pi * x / width + p) for a, f, p in waves) / 2)
            for x in range(0, width + 8, 4)]


def fill_below(draw: ImageDraw.ImageDraw, line: list[tuple[int, float]], bottom: int,
               colour: Colour) -> None:
    draw.polygon([*line, (line[-1][0], bottom), (line[0][0], bottom)], fill=colour)


def mountains(rng: random.Random, size: tuple[int, int], colours: list[Colour]) -> Image.Image:
    """Ridges behind ridges in the haze, the sun above them."""
    top, low, near = colours
    picture = sky(size, top, low)
    veil = clouds(rng, size).point([max(0, i - 150) for i in range(256)])
    picture.paste(Image.new('RGB', size, (255, 244, 230)), mask=veil)
    width, height = size
    sun = (rng.uniform(0.25, 0.75) * width, rng.uniform(0.25, 0.42) * height)
    glow(picture, sun, height * 0.55, blend(low, (255, 240, 200), 0.6))
    glow(picture, sun, height * 0.07, (255, 255, 245))
    for layer in range(6):
        t = layer / 5
        line = ridge(rng, width, height * (0.5 + 0.09 * layer), height * (0.16 - 0.012 * layer))
        fill_below(ImageDraw.Draw(picture), line, height, blend(blend(low, near, 0.25), near, t))
        if layer < 5:
            mist = Image.new('L', size)
            mist.paste(Image.linear_gradient('L').resize((width, height // 3)).point(
                [i // 4 for i in range(256)]), (0, round(height * (0.45 + 0.09 * layer))))
            picture.paste(Image.new('RGB', size, low), mask=mist)
    return grain(rng, picture)


def sea(rng: random.Random, size: tuple[int, int], colours: list[Colour]) -> Image.Image:
    """A low sun over water."""
    top, low, water = colours
    width, height = size
    picture = sky(size, top, low)
    bands = clouds(rng, (width // 4, height)).resize(size)
    bands = bands.point([max(0, i - 140) for i in range(256)])
    picture.paste(Image.new('RGB', size, blend(top, (255, 230, 220), 0.5)), mask=bands)
    horizon = round(height * 0.58)
    sun = (rng.uniform(0.3, 0.7) * width, horizon - height * 0.09)
    glow(picture, sun, height * 0.6, blend(low, (255, 200, 120), 0.5))
    glow(picture, sun, height * 0.09, (255, 250, 225))
    mirror = ImageOps.flip(picture.crop((0, 2 * horizon - height, width, horizon)))
    picture.paste(Image.blend(mirror, Image.new('RGB', mirror.size, water), 0.55), (0, horizon))
    draw = ImageDraw.Draw(picture)
    for _ in range(2600):
        depth = rng.random() ** 2
        y = horizon + 2 + depth * (height - horizon)
        spread = (0.05 + depth * 0.35) * width
        x = sun[0] + rng.gauss(0, 0.5) * spread
        length = 6 + depth * 70
        strength = rng.uniform(0.2, 0.95) / (1 + abs(x - sun[0]) / spread)
        shine = blend(water, (255, 226, 170), strength)
        draw.line([(x, y), (x + length, y)], fill=shine, width=1 + round(depth * 3))
    return grain(rng, picture.filter(ImageFilter.GaussianBlur(0.8)))


def night(rng: random.Random, size: tuple[int, int], colours: list[Colour]) -> Image.Image:
    """Stars and polar lights over dark hills."""
    top, low, lights = colours
    width, height = size
    picture = sky(size, top, low)
    draw = ImageDraw.Draw(picture)
    for _ in range(1800):
        x, y = rng.uniform(0, width), rng.uniform(0, height)
        bright = round(255 * rng.random() ** 2.5)
        radius = 0.4 + 1.4 * rng.random() ** 6
        box = [x - radius, y - radius, x + radius, y + radius]
        draw.ellipse(box, fill=(bright, bright, bright))
    for _ in range(3):
        streaks = Image.frombytes('L', (160, 1), rng.randbytes(160)).resize(size, Image.BICUBIC)
        curtain = Image.linear_gradient('L').rotate(180).resize((width, height))
        waves = ridge(rng, width, height * rng.uniform(0.45, 0.6), height * 0.2)
        area = Image.new('L', size)
        ImageDraw.Draw(area).polygon([*waves, (width, 0), (0, 0)], fill=255)
        area = area.filter(ImageFilter.GaussianBlur(height / 40))
        mask = ImageChops.multiply(ImageChops.multiply(streaks, ImageOps.invert(curtain)), area)
        shine = Image.composite(Image.new('RGB', size, lights), Image.new('RGB', size), mask)
        picture = ImageChops.screen(picture, shine)
    for layer in range(2):
        line = ridge(rng, width, height * (0.84 + 0.08 * layer), height * 0.1)
        colour = blend((4, 6, 12), low, 0.2 - 0.15 * layer)
        fill_below(ImageDraw.Draw(picture), line, height, colour)
    return grain(rng, picture, 5)


def city(rng: random.Random, size: tuple[int, int], colours: list[Colour]) -> Image.Image:
    """A skyline with lit windows."""
    top, low, wall = colours
    width, height = size
    picture = sky(size, top, low)
    glow(picture, (width * rng.random(), height * 0.25), height * 0.06, (255, 255, 235))
    draw = ImageDraw.Draw(picture)
    for layer in range(3):
        colour = blend(low, wall, 0.45 + 0.25 * layer)
        x = -20.0
        while x < width:
            w = rng.randrange(50, 130)
            roof = height * (0.35 + 0.13 * layer) + rng.uniform(0, height * 0.25)
            draw.rectangle([x, roof, x + w, height], fill=colour)
            for wx in range(round(x) + 8, round(x) + w - 10, 14):
                for wy in range(round(roof) + 10, height, 20):
                    if rng.random() < 0.14 + 0.14 * layer:
                        lamp = blend((255, 196, 92), (255, 246, 214), rng.random())
                        draw.rectangle([wx, wy, wx + 6, wy + 9], fill=blend(colour, lamp, 0.8))
            x += w + rng.randrange(-6, 16)
    return grain(rng, picture.filter(ImageFilter.GaussianBlur(0.6)))


def bokeh(rng: random.Random, size: tuple[int, int], colours: list[Colour]) -> Image.Image:
    """Lights out of focus."""
    picture = sky(size, blend(colours[0], (0, 0, 0), 0.7), blend(colours[1], (0, 0, 0), 0.6))
    for step in range(70):
        radius = rng.uniform(0.02, 0.1) * size[1]
        x, y = rng.uniform(0, size[0]), rng.gauss(0.55, 0.22) * size[1]
        layer = Image.new('L', size)
        draw = ImageDraw.Draw(layer)
        draw.ellipse([x - radius, y - radius, x + radius, y + radius], fill=rng.randrange(35, 95))
        if step % 8 == 0:
            layer = layer.filter(ImageFilter.GaussianBlur(4))
        picture.paste(Image.new('RGB', size, rng.choice(colours)), mask=layer)
    return grain(rng, picture.filter(ImageFilter.GaussianBlur(1.2)))


def marble(rng: random.Random, size: tuple[int, int], colours: list[Colour]) -> Image.Image:
    """Veins in stone."""
    folds = [round(127 + 127 * math.sin(i / 255 * math.pi * 5)) for i in range(256)]
    veins = clouds(rng, size, 3).filter(ImageFilter.GaussianBlur(6)).point(folds)
    return grain(rng, ImageOps.colorize(veins, colours[0], colours[1], colours[2]), 6)


def fractal(rng: random.Random, size: tuple[int, int], colours: list[Colour]) -> Image.Image:
    """A piece of the set that everybody likes."""
    places = [(-0.7480, 0.1, 0.02), (-0.7436, 0.1318, 0.004), (-0.16, 1.0405, 0.03),
              (0.275, 0.0, 0.03)]
    x, y, r = places[rng.randrange(len(places))]
    grey = Image.effect_mandelbrot(size, (x - r, y - r * 0.75, x + r, y + r * 0.75), 90)
    return ImageOps.colorize(ImageOps.equalize(grey), colours[0], colours[1], colours[2])


SUNRISE = [(38, 66, 120), (250, 182, 140), (28, 26, 48)]
MORNING = [(86, 150, 214), (232, 240, 244), (24, 62, 70)]
EVENING = [(44, 30, 84), (252, 142, 84), (22, 32, 66)]
POLAR = [(4, 8, 28), (18, 44, 66), (84, 255, 170)]
VIOLET = [(12, 6, 34), (52, 22, 74), (228, 110, 255)]
DUSK = [(16, 22, 58), (196, 108, 122), (14, 16, 30)]
CANDY = [(255, 92, 138), (255, 196, 92), (92, 200, 255)]
STONE = [(18, 40, 48), (238, 232, 216), (176, 128, 84)]
FIRE = [(10, 4, 24), (255, 246, 190), (214, 62, 34)]

Scene = Callable[[random.Random, tuple[int, int], list[Colour]], Image.Image]
SCENES: list[tuple[Scene, list[list[Colour]]]] = [
    (mountains, [SUNRISE, MORNING, DUSK]), (sea, [EVENING, SUNRISE, MORNING]),
    (night, [POLAR, VIOLET]), (city, [DUSK, EVENING]), (bokeh, [CANDY, EVENING]),
    (marble, [STONE, FIRE, MORNING]), (fractal, [FIRE, POLAR, CANDY]),
]


def pictures(sizes: list[tuple[int, int]]) -> Iterator[Image.Image]:
    """One picture for each size; kinds and colours take turns."""
    for number, size in enumerate(sizes):
        draw, palettes = SCENES[number % len(SCENES)]
        palette = palettes[number // len(SCENES) % len(palettes)]
        yield draw(random.Random(1000 + number), size, palette)
