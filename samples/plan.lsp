; The plan of a flat, 11.2 m x 8.4 m, on a sheet of 420 x 297 at 1:50. Units are millimetres; the flat's lower left
; corner lies at 5000,4000.

(setq flat-x 5000 flat-y 4000)

; --- Parts ---

; A piece of wall between two corners of its outline, filled by a wide polyline along its middle.
(defun wall (x1 y1 x2 y2 / across middle)
  (setq across (min (- x2 x1) (- y2 y1)))
  (if (< (- y2 y1) (- x2 x1))
    (progn
      (setq middle (/ (+ y1 y2) 2.0))
      (command "PLINE" (pt x1 middle) "W" across across (pt x2 middle) ""))
    (progn
      (setq middle (/ (+ x1 x2) 2.0))
      (command "PLINE" (pt middle y1) "W" across across (pt middle y2) "")))
  (setvar "PLINEWID" 0.0))

; Draws with the lines of a block's function, its 0,0 at x,y and turned by degrees.
(defun placed (lines x y degrees)
  (command "UCS" "O" (pt x y))
  (command "UCS" "Z" degrees)
  (lines)
  (command "UCS" "P")
  (command "UCS" "P"))

(defun room (x y name area)
  (label "MC" x (+ y 150) 250 name)
  (label "MC" x (- y 200) 180 area))

; Length as metres with two places.
(defun metres (length) (rtos (/ length 1000.0) 2 2))

(defun tick (x y)
  (segment (- x 80) (- y 80) (+ x 80) (+ y 80)))

; Dimension lines with ticks through a list of places along one axis.
(defun dimension-x (y places / from)
  (segment (- (car places) 200) y (+ (last places) 200) y)
  (setq from nil)
  (foreach x places
    (tick x y)
    (segment x (- y 150) x (+ y 150))
    (if from (label "BC" (/ (+ from x) 2.0) (+ y 60) 180 (metres (- x from))))
    (setq from x)))

(defun dimension-y (x places)
  (command "UCS" "O" (pt x 0))
  (command "UCS" "Z" 90)
  (dimension-x 0 places)
  (command "UCS" "P")
  (command "UCS" "P"))

; --- The flat ---

(defun outer-walls ()
  (wall 0 0 1300 300)
  (wall 2500 0 3300 300)
  (wall 4500 0 5600 300)
  (wall 6500 0 8300 300)
  (wall 9500 0 11200 300)
  (wall 0 8100 2100 8400)
  (wall 3300 8100 8300 8400)
  (wall 9500 8100 11200 8400)
  (wall 0 300 300 8100)
  (wall 10900 300 11200 3700)
  (wall 10900 4900 11200 8100))

(defun inner-walls ()
  (wall 300 4500 5200 4615)
  (wall 5200 300 5315 3000)
  (wall 5200 3900 5315 5000)
  (wall 5200 5900 5315 8100)
  (wall 6815 300 6930 1800)
  (wall 6815 2700 6930 3700)
  (wall 6815 4600 6930 5600)
  (wall 6815 6500 6930 8100)
  (wall 6930 3200 10900 3315)
  (wall 6930 5200 10900 5315))

(defun openings ()
  (foreach x '(1300 3300 8300) (placed window-lines x 0 0))
  (foreach x '(2100 8300) (placed window-lines x 8100 0))
  (placed window-lines 11200 3700 90)
  (placed door-lines 5600 300 0)
  (placed door-lines 5200 3000 90)
  (placed door-lines 5200 5000 90)
  (placed door-lines 6930 2700 -90)
  (placed door-lines 6930 4600 -90)
  (placed door-lines 6930 6500 -90))

(defun fixtures ()
  (on-layer "FIXTURES" 8)
  (rectangle 6930 300 10900 900)
  (rectangle 10300 900 10900 3200)
  (rounded 8000 380 8900 820 60)
  (circle 8700 600 25)
  (foreach x '(9650 9950) (foreach y '(480 720) (circle x y 85)))
  (rounded 9200 4450 10900 5200 40)
  (rounded 9280 4530 10820 5120 250)
  (rounded 7500 3315 8100 3750 80)
  (circle 7800 3550 30)
  (rounded 8700 3315 9080 3480 30)
  (rounded 8710 3480 9070 3950 170))

(defun rooms ()
  (on-layer "ROOMS" 7)
  (room 2700 2700 "Living" "20.6 m2")
  (room 2900 5300 "Bedroom" "17.1 m2")
  (room 6065 4450 "Hall" "11.7 m2")
  (room 8600 2200 "Kitchen" "11.5 m2")
  (room 8400 4250 "Bath" "7.5 m2")
  (room 8900 5900 "Study" "11.1 m2"))

(defun dimensions ()
  (on-layer "DIMENSIONS" 1)
  (dimension-x -700 '(0 1300 2500 3300 4500 5600 6500 8300 9500 11200))
  (dimension-x -1250 '(0 300 5200 5315 6815 6930 10900 11200))
  (dimension-x 9100 '(0 11200))
  (dimension-y -700 '(0 300 4500 4615 8100 8400))
  (dimension-y 12300 '(0 8400)))

(defun draw-plan ()
  (library-prepare)
  (command "UCS" "O" (pt flat-x flat-y))
  (on-layer "WALLS" 8)
  (outer-walls)
  (inner-walls)
  (openings)
  (fixtures)
  (rooms)
  (dimensions)
  (command "UCS" "W")
  (command "-LAYER" "S" "0" "")
  (princ))
