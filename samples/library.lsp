; Blocks for plans of flats and offices. Units are millimetres.
;
;   (library-draw "DESK")              draws the block's objects around 0,0
;   (library-define "DESK" "DESK")     makes them a block of this drawing; the second text is the block's name
;   (library-blocks)                   names of all blocks
;
; Each block has its base point where a hand would take it: a door at its hinge, a window and furniture that stands
; against a wall at the left end of the wall's side, a chair in its middle.

(setvar "CMDECHO" 0)

; --- Small tools ---

(defun pt (x y) (list (float x) (float y) 0.0))

; Makes a layer, if need be, and the current one.
(defun on-layer (name color)
  (command "-LAYER" "M" name "C" color "" ""))

(defun rectangle (x1 y1 x2 y2)
  (command "PLINE" (pt x1 y1) (pt x2 y1) (pt x2 y2) (pt x1 y2) "C"))

; A rectangle whose corners are quarter circles of radius r.
(defun rounded (x1 y1 x2 y2 r)
  (command "PLINE" (pt (+ x1 r) y1) (pt (- x2 r) y1)
           "A" (pt x2 (+ y1 r)) "L" (pt x2 (- y2 r))
           "A" (pt (- x2 r) y2) "L" (pt (+ x1 r) y2)
           "A" (pt x1 (- y2 r)) "L" (pt x1 (+ y1 r))
           "A" "CL"))

(defun segment (x1 y1 x2 y2)
  (command "LINE" (pt x1 y1) (pt x2 y2) ""))

(defun circle (x y r)
  (command "CIRCLE" (pt x y) r))

; One line of text; how is a justification such as "MC" or "BL".
(defun label (how x y height text)
  (command "TEXT" "J" how (pt x y) height 0 text ""))

; An attribute definition. mode is "" or the mode that it has: "I" invisible, "C" constant, "V" verify, "P" preset.
; ATTDEF keeps its modes for the next time, so the mode of the last definition is switched off again.
(setq attribute-mode "")

(defun attribute (mode tag prompt value how x y height)
  (command "ATTDEF")
  (if (/= mode attribute-mode)
    (foreach switched (list attribute-mode mode)
      (if (/= switched "")
        (command switched))))
  (setq attribute-mode mode)
  (command "" tag prompt value "J" how (pt x y) height 0))

; --- The blocks ---

; Clear width 900, leaf 40 thick, for a wall of 115 that lies below the x axis. The hinge is at 0,0.
(defun door-lines ()
  (on-layer "DOORS" 3)
  (rectangle 0 -115 -50 0)
  (rectangle 900 -115 950 0)
  (rectangle 0 0 40 900)
  (command "ARC" "C" (pt 0 0) (pt 900 0) (pt 0 900)))

(defun door-attributes ()
  (on-layer "LABELS" 2)
  (attribute "" "NUMBER" "Door number" "D01" "MC" 450 300 120)
  (attribute "P" "FIRE_RATING" "Fire rating" "none" "MC" 450 130 80)
  (attribute "I" "MATERIAL" "Material of the leaf" "beech" "BL" 0 -400 80))

; 1200 wide, in a wall of 300 from the x axis upwards.
(defun window-lines ()
  (on-layer "WINDOWS" 4)
  (rectangle 0 0 1200 300)
  (rectangle 0 130 60 210)
  (rectangle 1140 130 1200 210)
  (rectangle 570 130 630 210)
  (segment 60 160 570 160)
  (segment 60 180 570 180)
  (segment 630 160 1140 160)
  (segment 630 180 1140 180))

(defun window-attributes ()
  (on-layer "LABELS" 2)
  (attribute "" "NUMBER" "Window number" "W01" "MC" 600 430 120)
  (attribute "I" "SILL" "Height of the sill" "900" "BL" 0 -200 80)
  (attribute "P" "GLAZING" "Glazing" "double" "MC" 600 -130 80))

; 1600 x 800, the wall behind it on the x axis.
(defun desk-lines ()
  (on-layer "FURNITURE" 6)
  (rounded 0 -800 1600 0 60)
  (rectangle 1150 -760 1550 -60)
  (rounded 480 -230 1060 -170 25)
  (rectangle 740 -170 800 -90)
  (rounded 550 -560 990 -420 20)
  (circle 1075 -490 32)
  (segment 1150 -300 1550 -300)
  (segment 1150 -530 1550 -530))

(defun desk-attributes ()
  (on-layer "LABELS" 2)
  (attribute "" "OWNER" "Who works here" "free" "MC" 800 -670 100)
  (attribute "P" "ROOM" "Room" "study" "MC" 270 -120 70)
  (attribute "I" "ASSET" "Asset number" "0000" "BL" 0 -1000 70))

; A swivel chair, 600 across, its middle at 0,0, looking up.
(defun chair-lines ()
  (on-layer "FURNITURE" 6)
  (rounded -230 -210 230 250 90)
  (command "ARC" (pt -250 -170) (pt 0 -290) (pt 250 -170))
  (command "ARC" (pt -215 -150) (pt 0 -235) (pt 215 -150))
  (rounded -300 -120 -245 140 25)
  (rounded 245 -120 300 140 25)
  (circle 0 20 35))

(defun chair-attributes ()
  (on-layer "LABELS" 2)
  (attribute "" "MODEL" "Model" "swivel" "MC" 0 110 70)
  (attribute "I" "ASSET" "Asset number" "0000" "BL" -230 -420 70))

; Three seats, 2100 x 900, the wall behind it on the x axis.
(defun sofa-lines ()
  (on-layer "FURNITURE" 6)
  (rounded 0 -900 2100 0 80)
  (rounded 150 -200 1950 -30 50)
  (rounded 20 -860 150 -40 50)
  (rounded 1950 -860 2080 -40 50)
  (rounded 160 -860 740 -210 60)
  (rounded 760 -860 1340 -210 60)
  (rounded 1360 -860 1940 -210 60))

(defun sofa-attributes ()
  (on-layer "LABELS" 2)
  (attribute "" "FABRIC" "Fabric" "wool, grey" "MC" 1050 -550 90)
  (attribute "P" "SEATS" "Seats" "3" "MC" 1050 -115 80))

; For two, 1800 x 2100, the wall behind it on the x axis.
(defun bed-lines ()
  (on-layer "FURNITURE" 6)
  (rounded 0 -2100 1800 0 50)
  (segment 0 -80 1800 -80)
  (rounded 130 -520 830 -130 90)
  (rounded 970 -520 1670 -130 90)
  (segment 0 -700 1800 -700)
  (command "PLINE" (pt 0 -700) (pt 1200 -700) (pt 1800 -1150) ""))

(defun bed-attributes ()
  (on-layer "LABELS" 2)
  (attribute "" "MATTRESS" "Mattress" "2 x 90/200" "MC" 800 -1500 100)
  (attribute "I" "SUPPLIER" "Supplier" "-" "BL" 0 -2300 80))

; A sheet of 420 x 297 at 1:50 with its title in the lower right corner.
(defun title-lines ()
  (on-layer "SHEET" 7)
  (rectangle 0 0 21000 14850)
  (command "PLINE" (pt 1000 500) "W" 50 50 (pt 20500 500) (pt 20500 14350) (pt 1000 14350) "C")
  (command "PLINE" (pt 11500 500) "W" 25 25 (pt 11500 2750) (pt 20500 2750) "")
  (setvar "PLINEWID" 0.0)
  (segment 11500 2000 20500 2000)
  (segment 11500 1250 20500 1250)
  (segment 15500 500 15500 1250)
  (segment 18000 500 18000 1250)
  (segment 18000 1250 18000 2000)
  (on-layer "LABELS" 2)
  (label "TL" 11600 2700 125 "PROJECT")
  (label "TL" 11600 1950 125 "TITLE")
  (label "TL" 18100 1950 125 "SHEET")
  (label "TL" 11600 1200 125 "DRAWN BY")
  (label "TL" 15600 1200 125 "DATE")
  (label "TL" 18100 1200 125 "SCALE"))

(defun title-attributes ()
  (on-layer "SHEET" 7)
  (attribute "" "PROJECT" "Project" "Flat for two" "BL" 11700 2130 300)
  (attribute "" "TITLE" "Title of the sheet" "Plan" "BL" 11700 1380 300)
  (attribute "" "SHEET" "Number of the sheet" "1" "BL" 18200 1380 300)
  (attribute "V" "DRAWN_BY" "Drawn by" "-" "BL" 11700 630 250)
  (attribute "" "DATE" "Date" "-" "BL" 15700 630 250)
  (attribute "P" "SCALE" "Scale" "1:50" "BL" 18200 630 250))

; --- What the scripts call ---

(defun library-blocks () '("DOOR" "WINDOW" "DESK" "CHAIR" "SOFA" "BED" "TITLE"))

(defun library-prepare ()
  (setvar "LUPREC" 0)
  (setvar "INSUNITS" 4)
  (setvar "PLINEWID" 0.0))

(defun library-draw (name)
  (library-prepare)
  (cond ((= name "DOOR") (door-lines) (door-attributes))
        ((= name "WINDOW") (window-lines) (window-attributes))
        ((= name "DESK") (desk-lines) (desk-attributes))
        ((= name "CHAIR") (chair-lines) (chair-attributes))
        ((= name "SOFA") (sofa-lines) (sofa-attributes))
        ((= name "BED") (bed-lines) (bed-attributes))
        ((= name "TITLE") (title-lines) (title-attributes))
        (T (princ (strcat "\nThe library has no block " name ".\n"))))
  (command "-LAYER" "S" "0" "")
  (princ))

; Redefines a block of that name without asking.
(defun library-define (name block / before object expert)
  (setq before (entlast)
        expert (getvar "EXPERT"))
  (library-draw name)
  (setvar "EXPERT" 2)
  (command "-BLOCK" block (pt 0 0))
  (setq object (if before (entnext before) (entnext)))
  (while object
    (command object)
    (setq object (entnext object)))
  (command "")
  (setvar "EXPERT" expert)
  (princ (strcat "Block " block " is defined.\n"))
  (princ))
