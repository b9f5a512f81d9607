// A bearing bracket, as it would come off a mill: a base plate with rounded edges, a thin-walled hub that runs into the
// plate through a fillet, four ribs of 2 mm, counterbored bolt holes, four slots, a groove for a retaining ring and an oil
// bore. Lengths are in millimetres.
//
// Fillets are made in the profiles that are turned or hulled, so that only few bodies have to be joined: it renders in a minute or two.

plate = [130, 90, 10];
plateCorner = 14;
plateEdge = 3;        // rounding of the upper edge of the plate
hubHeight = 48;
hubRadius = 27;
hubWall = 4;
baseFillet = 9;       // between hub and plate
ribThickness = 2;
boltAt = [50, 30];
slotAt = [24, 38];
turn = 144;           // segments of a full turn of the hub
arc = 12;             // segments of a quarter of a fillet

// Points on a quarter of a circle, from angle a to angle b.
function quarter(centre, r, a, b) =
    [for (i = [0 : arc]) let (t = a + (b - a) * i / arc) centre + r * [cos(t), sin(t)]];

// A turned corner with a rounded upper edge; the hull of four of them is the plate.
module corner() {
    rotate_extrude($fn = 96)
        polygon(concat([[0, 0], [plateCorner, 0]],
                       quarter([plateCorner - plateEdge, plate.z - plateEdge], plateEdge, 0, 90),
                       [[0, plate.z]]));
}

module base() {
    hull()
        for (x = [-1, 1], y = [-1, 1])
            translate([x * (plate.x / 2 - plateCorner), y * (plate.y / 2 - plateCorner), 0]) corner();
}

// The outside of the hub, from inside the plate up: fillet, wall, rounded rim.
module hub() {
    rotate_extrude($fn = turn)
        polygon(concat([[0, 2], [hubRadius + baseFillet, 2], [hubRadius + baseFillet, plate.z]],
                       quarter([hubRadius + baseFillet, plate.z + baseFillet], baseFillet, 270, 180),
                       quarter([hubRadius - 1.5, hubHeight - 1.5], 1.5, 0, 90),
                       [[0, hubHeight]]));
}

// What is turned out of the hub: a through bore, a step for the outer ring of the bearing, a groove and a rounded mouth.
module bore() {
    inner = hubRadius - hubWall;
    rotate_extrude($fn = turn)
        polygon(concat([[0, -1], [15, -1], [15, 6]],
                       quarter([13, 8], 2, 0, 0.001),
                       quarter([inner - 2, 14], 2, 270, 360),
                       [[inner, 39]],
                       quarter([inner, 41], 1.6, 270, 450),
                       [[inner, 43]],
                       quarter([inner + 1.5, hubHeight - 1.5], 1.5, 180, 90),
                       [[inner + 1.5, hubHeight + 1], [0, hubHeight + 1]]));
}

// A bolt hole with a counterbore, rounded where a screw head would meet a sharp edge.
module bolt() {
    rotate_extrude($fn = 72)
        polygon(concat([[0, -1], [3.3, -1], [3.3, 4]],
                       quarter([4.3, 4], 1, 180, 90),
                       quarter([5.2, 5.8], 0.8, 270, 360),
                       quarter([7, plate.z - 1], 1, 180, 90),
                       [[7, plate.z + 1], [0, plate.z + 1]]));
}

module slot() {
    translate([0, 0, -1])
        linear_extrude(plate.z + 2)
            hull() for (x = [-7, 7]) translate([x, 0]) circle(3.5, $fn = 72);
}

// A rib in its own plane: a web that runs from the hub out to the toe, `length` further on, with a hollow back (half-way
// between a straight line and a quarter of an ellipse).
module rib(length) {
    start = hubRadius - 2;
    toe = [start + length, plate.z + 1.5];
    top = [start, hubHeight - 8];
    back = [for (i = [0 : 2 * arc]) let (s = i / (2 * arc), t = 270 - 90 * s)
        0.5 * (toe + (top - toe) * s) + 0.5 * [toe.x + length * cos(t), top.y + (top.y - toe.y) * sin(t)]];
    rotate([90, 0, 0])
        linear_extrude(ribThickness, center = true)
            polygon(concat([[start, plate.z - 2], [toe.x, plate.z - 2]], back));
}

difference() {
    union() {
        base();
        hub();
        for (a = [0, 180]) rotate(a) rib(plate.x / 2 - plateEdge - hubRadius + 1);
        for (a = [90, 270]) rotate(a) rib(plate.y / 2 - plateEdge - hubRadius + 1);
    }
    bore();
    for (x = [-1, 1], y = [-1, 1]) translate([x * boltAt.x, y * boltAt.y, 0]) bolt();
    for (x = [-1, 1], y = [-1, 1]) translate([x * slotAt.x, y * slotAt.y, 0]) slot();
    // Oil bore, at 45 degrees between two ribs.
    rotate([0, 90, 45]) translate([-30, 0, 0]) cylinder(r = 2.5, h = hubRadius + 10, $fn = 64);
}
