# Draws the blocks of curves.txt, one panel each: instructions over the size of the input.
set terminal pngcairo size 1600,1500 font ',9'
set output 'curves.png'
stats 'curves.txt' using 1:2 nooutput
panels = STATS_blocks
columns = 5
set multiplot layout (panels + columns - 1) / columns, columns
set key off
set xrange [0:*]
set yrange [0:*]
set format '%.1s%c'
set tics font ',8'
do for [panel = 0:panels - 1] {
  set title system(sprintf("awk '/^# / && n++ == %d { print substr($0, 3) }' curves.txt", panel))
  plot 'curves.txt' index panel using 1:2 with linespoints pointtype 7 pointsize 0.5
}
